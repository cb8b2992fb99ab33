#include "PackageInformation.h"

#include "common/NumberedSection.h"
#include "NumberAtStart.h"

#include <cmath>

namespace docview {

namespace {

constexpr double kFirstRecentYear = 2021.0;

/// The decimal number at the start of a text, truncated; 0 when there is none. Only characters of a decimal
/// number are passed on, because the conversion also accepts hexadecimal digits, "inf" and "nan".
double LeadingNumber(const std::wstring& text) {
    const std::wstring number = text.substr(0, text.find_first_not_of(L"\t0123456789+-.eE"));
    return std::trunc(NumberAtStart(number));
}

} // namespace

bool IsRecentVersion(const std::wstring& versionLine) {
    const std::size_t end = versionLine.find_last_not_of(L' ');
    const std::size_t blank = versionLine.find_last_of(L' ', end);
    if (blank == std::wstring::npos || versionLine.find_first_not_of(L' ') > blank) {
        return false;
    }
    return LeadingNumber(versionLine.substr(blank + 1, end - blank)) >= kFirstRecentYear;
}

PackageSummary ReadSummary(const CatalogueSource& source, const std::wstring& packageFolder) {
    PackageSummary summary;
    const std::wstring thumbnail = source.Value(inikey::kFileInfo, inikey::kThumbnail);
    if (!thumbnail.empty()) {
        summary.thumbnailPath = packageFolder + thumbnail;
    }
    for (const std::wstring& section : source.SectionNames(inikey::kHistoryPrefix)) {
        summary.history.push_back({.operation = source.Value(section, inikey::kOperation),
                                   .time = source.Value(section, inikey::kTime),
                                   .by = source.Value(section, inikey::kBy),
                                   .remarks = source.Value(section, inikey::kRemarks)});
    }
    return summary;
}

std::wstring AdditionalSection(const CatalogueSource& source, int lastIndex) {
    return common::NextSection(inikey::kAdditionalPrefix, lastIndex,
                               [&] { return source.SectionNames(inikey::kAdditionalPrefix); });
}

} // namespace docview
