#include "ItemText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include <shlwapi.h>

namespace docview {

namespace {

constexpr double kBytesPerKilobyte = 1024.0;

/// The size as a signed 32-bit number, by the rule of File::GetFileSize.
int ClampedSize(const FileStatus& status) {
    constexpr std::uint64_t kLargest = std::numeric_limits<int>::max();
    return status.isFolder ? 0 : static_cast<int>(std::min(status.size, kLargest));
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
    return PathFindFileNameW(path.c_str());
}

} // namespace docview

std::wstring FormatFileTime(const FILETIME& time) {
    SYSTEMTIME fields = {};
    FileTimeToSystemTime(&time, &fields);
    wchar_t text[32] = {};
    _snwprintf(text, std::size(text) - 1, L"%d-%02d-%02d %02d:%02d:%02d", fields.wYear, fields.wMonth,
               fields.wDay, fields.wHour, fields.wMinute, fields.wSecond);
    return text;
}
