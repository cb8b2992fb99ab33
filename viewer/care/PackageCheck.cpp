#include "care/PackageCheck.h"

#include "care/CheckSource.h"
#include "care/UnpackedContent.h"
#include "common/Clock.h"
#include "package/PackageInformation.h"

#include <algorithm>

namespace viewer {

CheckReport CheckUnpacked(const std::wstring& folder, WorkProgress& progress) {
    CheckReport report;
    care::PackageContent content;
    const mxovshare::PackageResult result = ReadUnpacked(folder, content);
    if (!result.ok) {
        report.message = result.message;
        return report;
    }
    try {
        const CheckSource source(docview::FindInformationFile(folder), progress);
        const care::CheckedPackage package = {.entries = content.entries,
                                              .sections = content.sections,
                                              .source = source,
                                              .folder = folder,
                                              .others = care::OtherComputers::Asked};
        care::FindFaults(package, common::SystemTime(),
                         [&report](const care::Finding& finding) { report.findings.push_back(finding); });
        std::ranges::stable_sort(report.findings, {}, &care::Finding::severity);
        report.ok = true;
    } catch (const CheckCancelled&) {
        report.cancelled = true;
    }
    return report;
}

} // namespace viewer
