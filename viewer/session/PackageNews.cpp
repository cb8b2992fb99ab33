#include "session/PackageNews.h"

#include "package/Paths.h"
#include "package/ProgramsText.h"
#include "package/ValueText.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

UINT NumberOf(FileChangeKind kind) {
    switch (kind) {
    case FileChangeKind::Added:
        return IDS_DOCUMENT_ADDED;
    case FileChangeKind::Removed:
        return IDS_DOCUMENT_REMOVED;
    default:
        return IDS_DOCUMENT_CHANGED;
    }
}

std::wstring ChangesText(const std::vector<FileChange>& changes) {
    return changes.size() == 1 ? Text(NumberOf(changes[0].kind), {FileName(changes[0].name)})
                               : Text(IDS_DOCUMENTS_CHANGED, {std::to_wstring(changes.size())});
}

} // namespace

PackageNews FindNews(const PackageState& state, const std::wstring& packageFile) {
    if (!state.folderFound) {
        return {Text(IDS_FOLDER_OFFLINE, {ParentFolder(packageFile)}), {}};
    }
    if (state.stamp.empty()) {
        return {Text(IDS_FILE_GONE, {FileName(packageFile)}), {NewsAction::Save}};
    }
    if (IsSavedElsewhere(state)) {
        const std::wstring clock = LocalClockText(state.savedAt);
        return {state.savedBy.empty() ? Text(IDS_SAVED_BY_PROGRAM, {clock})
                                      : Text(IDS_SAVED_BY, {state.savedBy, clock}),
                {NewsAction::Reload, NewsAction::Compare}};
    }
    std::vector<FileChange> changes = state.changes;
    std::erase_if(changes, IsControlChange);
    if (changes.empty()) {
        return {};
    }
    return {ChangesText(changes), {NewsAction::Save}};
}

PackageNews FindPrograms(const std::vector<mxovshare::PackageEntry>& entries) {
    const std::wstring names = ProgramsText(entries);
    if (names.empty()) {
        return {};
    }
    return {Text(IDS_HOLDS_PROGRAMS, {names}), {}};
}

bool IsSavedElsewhere(const PackageState& state) {
    return !state.stamp.empty() && !state.knownStamp.empty() && state.stamp != state.knownStamp;
}

} // namespace viewer
