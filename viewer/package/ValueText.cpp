#include "package/ValueText.h"

#include <optional>

#include <shlwapi.h>

namespace viewer {

namespace {

std::optional<SYSTEMTIME> ToLocal(const FILETIME& time) {
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
        return std::nullopt;
    }
    return local;
}

std::wstring ClockText(const SYSTEMTIME& local) {
    wchar_t clock[64] = L"";
    GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, TIME_NOSECONDS, &local, nullptr, clock, ARRAYSIZE(clock));
    return clock;
}

std::wstring TimeText(const FILETIME& time, DWORD dateForm) {
    const std::optional<SYSTEMTIME> local = ToLocal(time);
    if (!local) {
        return {};
    }
    wchar_t day[64] = L"";
    GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, dateForm, &*local, nullptr, day, ARRAYSIZE(day), nullptr);
    return std::wstring(day) + L", " + ClockText(*local);
}

} // namespace

std::wstring LocalTimeText(const FILETIME& time) {
    return TimeText(time, DATE_LONGDATE);
}

std::wstring ShortLocalTimeText(const FILETIME& time) {
    return TimeText(time, DATE_SHORTDATE);
}

std::wstring LocalClockText(const FILETIME& time) {
    const std::optional<SYSTEMTIME> local = ToLocal(time);
    return local ? ClockText(*local) : std::wstring();
}

std::wstring ByteSizeText(std::uint64_t bytes) {
    wchar_t text[32] = L"";
    StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, ARRAYSIZE(text));
    return text;
}

} // namespace viewer
