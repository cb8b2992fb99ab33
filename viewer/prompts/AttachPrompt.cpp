#include "prompts/AttachPrompt.h"

#include "package/Paths.h"
#include "prompts/TaskPrompt.h"
#include "prompts/UnsavedPrompts.h"
#include "texts/Texts.h"

namespace viewer {

std::optional<AttachMode> AskHowToAttach(HWND owner, const std::wstring& packageFile,
                                         const std::vector<std::wstring>& files) {
    std::vector<std::wstring> names;
    names.reserve(files.size());
    for (const std::wstring& file : files) {
        names.push_back(FileName(file));
    }
    const std::wstring package = FileName(packageFile);
    const std::wstring question = files.size() == 1
                                      ? Text(IDS_ATTACH_ONE, {package})
                                      : Text(IDS_ATTACH_MANY, {std::to_wstring(files.size()), package});
    using Answer = std::optional<AttachMode>;
    return AskUser<Answer>(owner, question, ShortList(names) + L"\n" + Text(IDS_ATTACH_HOW),
                           {{Text(IDS_LINK), AttachMode::Link},
                            {Text(IDS_COPY), AttachMode::Copy},
                            {Text(IDS_CANCEL), std::nullopt}},
                           std::nullopt, TD_INFORMATION_ICON);
}

SharedNameAnswer AskAboutSharedName(HWND owner, const std::wstring& name) {
    using enum SharedNameAnswer;
    return AskUser<SharedNameAnswer>(
        owner, Text(IDS_SHARED_NAME, {name}), Text(IDS_SHARED_NAME_HOW),
        {{Text(IDS_KEEP_BOTH), KeepBoth}, {Text(IDS_REPLACE), Replace}, {Text(IDS_CANCEL), Cancel}}, Cancel,
        TD_INFORMATION_ICON);
}

} // namespace viewer
