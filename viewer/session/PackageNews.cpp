#include "session/PackageNews.h"

#include "common/Programs.h"
#include "package/Paths.h"
#include "package/ValueText.h"

namespace viewer {

namespace {

std::wstring ChangesText(const std::vector<FileChange>& changes) {
    const std::wstring what = changes.size() == 1
                                  ? FileName(changes[0].name) + TextFor(changes[0].kind, L" was changed",
                                                                        L" was added", L" was removed")
                                  : std::to_wstring(changes.size()) + L" documents were changed";
    return what + L" by another program.";
}

} // namespace

PackageNews FindNews(const PackageState& state, const std::wstring& packageFile) {
    if (!state.folderFound) {
        return {L"The folder " + ParentFolder(packageFile) + L" is offline.", {}};
    }
    if (state.stamp.empty()) {
        return {FileName(packageFile) + L" was moved or deleted by another program.", {NewsAction::Save}};
    }
    if (IsSavedElsewhere(state)) {
        const std::wstring who = state.savedBy.empty() ? L"Another program" : state.savedBy;
        return {who + L" saved this package at " + LocalClockText(state.savedAt) + L".",
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
    const std::wstring names = common::ProgramNames(entries);
    if (names.empty()) {
        return {};
    }
    return {L"This package holds programs: " + names + L". Open them only if you trust their origin.", {}};
}

bool IsSavedElsewhere(const PackageState& state) {
    return !state.stamp.empty() && !state.knownStamp.empty() && state.stamp != state.knownStamp;
}

} // namespace viewer
