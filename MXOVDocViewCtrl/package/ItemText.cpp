#include "ItemText.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <iterator>
#include <limits>
#include <string_view>

namespace docview {

namespace {

constexpr double kBytesPerKilobyte = 1024.0;

/// The size as a signed 32-bit number, by the rule of File::GetFileSize.
int ClampedSize(const FileStatus& status) {
    constexpr std::uint64_t kLargest = std::numeric_limits<int>::max();
    return status.isFolder ? 0 : static_cast<int>(std::min(status.size, kLargest));
}

bool IsSeparator(wchar_t unit) {
    return unit == L'\\' || unit == L'/';
}

/// Calendar fields of a number of days since 1601-01-01.
struct CalendarDay {
    int year;
    int month;
    int day;
};

CalendarDay CalendarDayOf(std::uint64_t days) {
    // Years begin in March here, so that the day of a leap year is their last one.
    constexpr std::uint64_t kFrom1600March = 306;
    constexpr std::uint64_t kPerEra = 146'097; // 400 years
    days += kFrom1600March;
    const std::uint64_t inEra = days % kPerEra;
    const std::uint64_t year = (inEra - inEra / 1460 + inEra / 36'524 - inEra / 146'096) / 365;
    const auto inYear = static_cast<int>(inEra - (365 * year + year / 4 - year / 100));
    const int month = (5 * inYear + 2) / 153; // from March
    return {.year = static_cast<int>(1600 + days / kPerEra * 400 + year) + (month >= 10 ? 1 : 0),
            .month = month < 10 ? month + 3 : month - 9,
            .day = inYear - (153 * month + 2) / 5 + 1};
}

} // namespace

std::wstring SizeText(int bytes) {
    const auto single = static_cast<float>(bytes);
    return std::to_wstring(static_cast<int>(std::ceil(single / kBytesPerKilobyte))) + L" KB";
}

std::wstring DocumentSizeText(const CatalogueSource& source, const std::wstring& packageFolder,
                              const std::wstring& path, const FileStatus& status) {
    return SizeText(status.exists ? ClampedSize(status) : source.FileSize(packageFolder + L"\\" + path));
}

std::wstring FileNameOf(const std::wstring& path) {
    std::size_t start = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        if ((IsSeparator(path[i]) || path[i] == L':') && !IsSeparator(path[i + 1])) {
            start = i + 1;
        }
    }
    return path.substr(start);
}

} // namespace docview

std::wstring FormatFileTime(const FILETIME& time) {
    constexpr std::uint64_t kTicksPerSecond = 10'000'000;
    constexpr std::uint64_t kSecondsPerDay = 86'400;
    const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    if (ticks >> 63 != 0) { // which the system has no calendar fields for
        return L"0-00-00 00:00:00";
    }
    const std::uint64_t seconds = ticks / kTicksPerSecond;
    const docview::CalendarDay day = docview::CalendarDayOf(seconds / kSecondsPerDay);
    const auto clock = static_cast<int>(seconds % kSecondsPerDay);
    wchar_t text[32] = {};
    std::swprintf(text, std::size(text), L"%d-%02d-%02d %02d:%02d:%02d", day.year, day.month, day.day,
                  clock / 3600, clock / 60 % 60, clock % 60);
    return text;
}
