#include "pack/FileTimes.h"

namespace mxovshare {

namespace {

// 1980-01-01, the first day that the format knows.
constexpr std::uint32_t kFirstDosTime = 0x00210000;

std::uint64_t Join(const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

FILETIME Split(std::uint64_t ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

} // namespace

ZipTime ToZipTime(const FILETIME& utc) {
    ZipTime time;
    time.fileTime = Join(utc);
    time.dosTime = kFirstDosTime;
    SYSTEMTIME fields = {};
    SYSTEMTIME localFields = {};
    FILETIME local = {};
    WORD date = 0;
    WORD clock = 0;
    if (FileTimeToSystemTime(&utc, &fields) &&
        SystemTimeToTzSpecificLocalTime(nullptr, &fields, &localFields) &&
        SystemTimeToFileTime(&localFields, &local) && FileTimeToDosDateTime(&local, &date, &clock)) {
        time.dosTime = static_cast<std::uint32_t>(date) << 16 | clock;
    }
    return time;
}

FILETIME ToFileTime(const ZipTime& time) {
    if (time.fileTime != 0) {
        return Split(time.fileTime);
    }
    FILETIME local = {};
    FILETIME utc = {};
    SYSTEMTIME localFields = {};
    SYSTEMTIME fields = {};
    if (!DosDateTimeToFileTime(static_cast<WORD>(time.dosTime >> 16), static_cast<WORD>(time.dosTime),
                               &local) ||
        !FileTimeToSystemTime(&local, &localFields) ||
        !TzSpecificLocalTimeToSystemTime(nullptr, &localFields, &fields) ||
        !SystemTimeToFileTime(&fields, &utc)) {
        return {};
    }
    return utc;
}

} // namespace mxovshare
