#include "package/PackageHistory.h"

#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"

#include <algorithm>
#include <iterator>

namespace viewer {

std::vector<HistoryLine> ReadHistory(const std::wstring& folder) {
    const docview::DiskCatalogueSource source(docview::FindInformationFile(folder));
    const std::vector<docview::HistoryEntry> entries = docview::ReadSummary(source, folder).history;
    std::vector<HistoryLine> lines;
    std::transform(entries.rbegin(), entries.rend(), std::back_inserter(lines),
                   [](const docview::HistoryEntry& entry) {
                       return HistoryLine{entry.time, entry.operation, entry.by, entry.remarks};
                   });
    return lines;
}

} // namespace viewer
