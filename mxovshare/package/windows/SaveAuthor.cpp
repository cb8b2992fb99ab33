#include "package/SaveAuthor.h"

#include <cwchar>
#include <iterator>

#include <windows.h>

#include <lmcons.h>

namespace mxovshare {

std::wstring LocalTimeText() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

std::wstring UserName() {
    wchar_t name[UNLEN + 1];
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetUserNameW(name, &size) ? std::wstring(name) : std::wstring();
}

} // namespace mxovshare
