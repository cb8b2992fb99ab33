#include "pack/FileTimes.h"

#include "common/Clock.h"

namespace mxovshare {

namespace {

// 1980-01-01, the first day that the format knows.
constexpr std::uint32_t kFirstDosTime = 0x00210000;
constexpr int kFirstYear = 1980;
constexpr int kYears = 128;

std::uint32_t ToDosTime(const tm& local) {
    const int year = local.tm_year + 1900 - kFirstYear;
    if (year < 0 || year >= kYears) {
        return kFirstDosTime;
    }
    const int date = year << 9 | (local.tm_mon + 1) << 5 | local.tm_mday;
    const int clock = local.tm_hour << 11 | local.tm_min << 5 | local.tm_sec / 2;
    return static_cast<std::uint32_t>(date) << 16 | static_cast<std::uint32_t>(clock);
}

tm FromDosTime(std::uint32_t time) {
    const int date = static_cast<int>(time >> 16);
    const int clock = static_cast<int>(time & 0xFFFF);
    tm local = {};
    local.tm_year = (date >> 9) + kFirstYear - 1900;
    local.tm_mon = (date >> 5 & 0xF) - 1;
    local.tm_mday = date & 0x1F;
    local.tm_hour = clock >> 11;
    local.tm_min = clock >> 5 & 0x3F;
    local.tm_sec = (clock & 0x1F) * 2;
    local.tm_isdst = -1;
    return local;
}

// Days that the month does not have as well.
bool IsTime(const tm& local) {
    tm normal = local;
    return local.tm_mon >= 0 && local.tm_mon < 12 && local.tm_mday > 0 && local.tm_hour < 24 &&
           local.tm_min < 60 && local.tm_sec < 60 && timegm(&normal) != -1 && normal.tm_mday == local.tm_mday;
}

} // namespace

ZipTime ToZipTime(const FILETIME& utc) {
    ZipTime time;
    time.fileTime = std::uint64_t{utc.dwHighDateTime} << 32 | utc.dwLowDateTime;
    const time_t seconds = common::ToTimeSpec(utc).tv_sec;
    tm local = {};
    time.dosTime = localtime_r(&seconds, &local) != nullptr ? ToDosTime(local) : kFirstDosTime;
    return time;
}

FILETIME ToFileTime(const ZipTime& time) {
    if (time.fileTime != 0) {
        return {static_cast<DWORD>(time.fileTime), static_cast<DWORD>(time.fileTime >> 32)};
    }
    tm local = FromDosTime(time.dosTime);
    return IsTime(local) ? common::ToFileTime(mktime(&local), 0) : FILETIME{};
}

} // namespace mxovshare
