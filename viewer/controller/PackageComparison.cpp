#include "controller/PackageComparison.h"

#include "controller/PackageView.h"
#include "package/Sentence.h"
#include "prompts/UnsavedPrompts.h"
#include "session/PackageSession.h"

namespace viewer {

void ComparePackage(PackageView& view, const PackageSession& session) {
    std::vector<mxovshare::PackageEntry> entries;
    const mxovshare::PackageResult result = mxovshare::ListPackage(session.PackageFile(), entries);
    if (!result.ok) {
        view.ShowError(Sentence(result.message));
        return;
    }
    std::vector<FileChange> changes = FindChanges(session.Folder(), entries);
    std::erase_if(changes, IsInformationFile);
    ShowComparison(view.Frame(), session.PackageFile(), changes);
}

} // namespace viewer
