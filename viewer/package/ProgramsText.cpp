#include "package/ProgramsText.h"

#include "common/Programs.h"
#include "texts/Texts.h"

namespace viewer {

std::wstring ProgramsText(const std::vector<mxovshare::PackageEntry>& entries) {
    const common::FoundPrograms found = common::FindPrograms(entries);
    return found.more > 0 ? Text(IDS_MORE_PROGRAMS, {found.names, std::to_wstring(found.more)}) : found.names;
}

} // namespace viewer
