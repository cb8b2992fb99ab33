#include "package/SaveAuthor.h"

#include "common/Utf8.h"

#include <ctime>
#include <cwchar>
#include <iterator>

#include <pwd.h>
#include <unistd.h>

namespace mxovshare {

std::wstring LocalTimeText() {
    const time_t seconds = std::time(nullptr);
    tm now = {};
    localtime_r(&seconds, &now);
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%d-%02d-%02d %02d:%02d:%02d", now.tm_year + 1900, now.tm_mon + 1,
                  now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec);
    return text;
}

std::wstring UserName() {
    const passwd* user = getpwuid(geteuid());
    return user != nullptr ? common::FromNameBytes(user->pw_name) : std::wstring();
}

} // namespace mxovshare
