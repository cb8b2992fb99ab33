#include "prompts/UnsavedPrompts.h"

#include "package/Paths.h"
#include "package/ValueText.h"
#include "prompts/TaskPrompt.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

// The name of a changed file, with a remark when it is new or removed.
std::wstring LineOf(const FileChange& change) {
    switch (change.kind) {
    case FileChangeKind::Added:
        return Text(IDS_FILE_NEW, {change.name});
    case FileChangeKind::Removed:
        return Text(IDS_FILE_REMOVED, {change.name});
    default:
        return change.name;
    }
}

} // namespace

RecoveryAnswer AskToRecover(HWND owner, const std::wstring& packageFile, const FILETIME& changed) {
    using enum RecoveryAnswer;
    return AskUser<RecoveryAnswer>(
        owner, Text(IDS_RECOVER, {FileName(packageFile)}),
        Text(IDS_RECOVER_HOW, {LocalTimeText(changed), packageFile}),
        {{Text(IDS_CONTINUE), Continue}, {Text(IDS_DISCARD), Discard}, {Text(IDS_ASK_LATER), Later}}, Later);
}

std::wstring ShortList(const std::vector<std::wstring>& lines) {
    constexpr std::size_t kMostLines = 10;
    // The line of the rest replaces at least two.
    const std::size_t shown = lines.size() > kMostLines ? kMostLines - 1 : lines.size();
    std::wstring list;
    for (std::size_t i = 0; i < shown; ++i) {
        list += lines[i] + L"\n";
    }
    if (shown < lines.size()) {
        list += Text(IDS_AND_MORE, {std::to_wstring(lines.size() - shown)}) + L"\n";
    }
    return list;
}

std::wstring ListOfChanges(const std::vector<FileChange>& changes) {
    std::vector<std::wstring> lines;
    lines.reserve(changes.size());
    for (const FileChange& change : changes) {
        lines.push_back(LineOf(change));
    }
    return ShortList(lines);
}

ChangesAnswer AskAboutChanges(HWND owner, const std::wstring& packageFile,
                              const std::vector<FileChange>& changes, bool declined) {
    using enum ChangesAnswer;
    const UINT what = changes.size() == 1 ? IDS_CHANGED_ONE : IDS_CHANGED_MANY;
    return AskUser<ChangesAnswer>(
        owner, Text(what, {FileName(packageFile)}),
        ListOfChanges(changes) + L"\n" + Text(declined ? IDS_SAVE_AFTER_ALL : IDS_SAVE_THESE),
        {{Text(IDS_SAVE), Save}, {Text(IDS_DISCARD), Discard}, {Text(IDS_GO_ON), GoOn}}, GoOn);
}

OpenAnswer AskAboutOpenDocuments(HWND owner, const std::wstring& packageFile,
                                 const std::vector<std::wstring>& names) {
    using enum OpenAnswer;
    const UINT what = names.size() == 1 ? IDS_OPEN_ONE : IDS_OPEN_MANY;
    return AskUser<OpenAnswer>(
        owner, Text(what, {FileName(packageFile)}), ShortList(names) + L"\n" + Text(IDS_OPEN_HOW),
        {{Text(IDS_TRY_AGAIN), TryAgain}, {Text(IDS_CLOSE_ANYWAY), Close}, {Text(IDS_GO_ON), GoOn}}, GoOn);
}

FailedSaveAnswer AskAboutFailedSave(HWND owner, const std::wstring& packageFile) {
    using enum FailedSaveAnswer;
    return AskUser<FailedSaveAnswer>(owner, Text(IDS_NOT_SAVED, {FileName(packageFile)}),
                                     Text(IDS_NOT_SAVED_HOW),
                                     {{Text(IDS_GO_ON), GoOn},
                                      {Text(IDS_SAVE_COPY), SaveCopy},
                                      {Text(IDS_KEEP), Keep},
                                      {Text(IDS_DISCARD), Discard}},
                                     GoOn);
}

} // namespace viewer
