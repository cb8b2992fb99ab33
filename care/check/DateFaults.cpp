#include "care/check/FaultSearch.h"
#include "care/check/FindingForms.h"

#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

// Local times may be ahead of UTC.
std::wstring DayAfter(const FILETIME& now) {
    constexpr std::uint64_t kTicksPerDay = 864'000'000'000;
    const std::uint64_t ticks =
        (static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime) + kTicksPerDay;
    return FormatFileTime({static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)});
}

} // namespace

bool IsDate(const std::wstring& text) {
    constexpr std::wstring_view kShape = L"0000-00-00 00:00:00";
    return std::ranges::equal(text, kShape, [](wchar_t unit, wchar_t shape) {
        return shape == L'0' ? unit >= L'0' && unit <= L'9' : unit == shape;
    });
}

void CheckHistory(const CheckedPackage& package, const FindingSink& take) {
    std::wstring last;
    for (const Section& section : package.sections) {
        const std::wstring time = ValueOf(section, inikey::kTime);
        if (!HasPrefix(section.name, inikey::kHistoryPrefix) || !IsDate(time)) {
            continue;
        }
        if (time < last) {
            take(MakeFinding(FindingText::HistoryOrder, {section.name, inikey::kTime}, {},
                             {section.name, time, last}));
        }
        last = std::max(last, time);
    }
}

void CheckDates(const CheckedPackage& package, const FILETIME& now, const FindingSink& take) {
    const std::wstring tomorrow = DayAfter(now);
    for (const Section& section : package.sections) {
        for (const wchar_t* key : {inikey::kTime, inikey::kTimestamp, inikey::kCadTime}) {
            const std::wstring time = ValueOf(section, key);
            if (IsDate(time) && time > tomorrow) {
                take(MakeFinding(FindingText::Future, {section.name, key}, {},
                                 {section.name + L"/" + key, time}));
            }
        }
    }
}

} // namespace care
