#include "package/HistoryEntry.h"

#include "common/NumberedSection.h"
#include "text/SystemText.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

#include <windows.h>

#include <lmcons.h>

namespace mxovshare {

namespace {

constexpr wchar_t kHistory[] = L"FILE_HISTORY";

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

} // namespace

IniValues NewHistoryEntry(const std::wstring& operation, const std::wstring& remarks) {
    return {
        {L"Operation", operation}, {L"Time", LocalTimeText()}, {L"By", UserName()}, {L"Remarks", remarks}};
}

std::wstring AddHistoryEntry(IniDocument& document, const IniValues& entry) {
    const std::u16string prefix = ToUtf16(kHistory);
    std::wstring section = common::NextSection(kHistory, document.LastIndex(prefix), [&] {
        std::vector<std::wstring> names;
        std::ranges::transform(document.SectionNames(prefix), std::back_inserter(names), ToWide);
        return names;
    });
    for (const auto& [key, value] : entry) {
        document.SetValue(ToUtf16(section), ToUtf16(key), ToUtf16(value));
    }
    return section;
}

} // namespace mxovshare
