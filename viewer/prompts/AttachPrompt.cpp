#include "prompts/AttachPrompt.h"

#include "package/Paths.h"
#include "prompts/TaskPrompt.h"
#include "prompts/UnsavedPrompts.h"

namespace viewer {

std::optional<AttachMode> AskHowToAttach(HWND owner, const std::wstring& packageFile,
                                         const std::vector<std::wstring>& files) {
    std::vector<std::wstring> names;
    names.reserve(files.size());
    for (const std::wstring& file : files) {
        names.push_back(FileName(file));
    }
    const std::wstring what =
        files.size() == 1 ? L"a document" : std::to_wstring(files.size()) + L" documents";
    using Answer = std::optional<AttachMode>;
    return AskUser<Answer>(
        owner, L"Attach " + what + L" to " + FileName(packageFile) + L"?",
        ShortList(names) + L"\nA link points at the file where it lies now. A copy becomes part "
                           L"of the package.",
        {{L"&Link", AttachMode::Link}, {L"&Copy", AttachMode::Copy}, {L"Cancel", std::nullopt}}, std::nullopt,
        TD_INFORMATION_ICON);
}

SharedNameAnswer AskAboutSharedName(HWND owner, const std::wstring& name) {
    using enum SharedNameAnswer;
    return AskUser<SharedNameAnswer>(owner, name + L" is already in the package",
                                     L"You can keep both under different names, or replace the document in "
                                     L"the package.",
                                     {{L"&Keep both", KeepBoth}, {L"&Replace", Replace}, {L"Cancel", Cancel}},
                                     Cancel, TD_INFORMATION_ICON);
}

} // namespace viewer
