#include "Commands.h"

#include "Output.h"
#include "Progress.h"
#include "Report.h"

#include <package/ItemText.h>

#include <algorithm>

namespace {

using mxovshare::PackageEntry;
using mxovshare::PackageResult;

std::wstring Summary(const std::vector<PackageEntry>& entries) {
    std::uint64_t size = 0;
    for (const PackageEntry& entry : entries) {
        size += entry.size;
    }
    const auto folders = static_cast<std::size_t>(std::ranges::count_if(entries, &PackageEntry::isFolder));
    std::wstring text = Count(entries.size() - folders, L"file");
    if (folders > 0) {
        text += L", " + Count(folders, L"empty folder");
    }
    return text + L", " + std::to_wstring(size) + L" bytes";
}

// Prints the contents of the package after an operation that ended with `result`.
int Finish(const PackageResult& result, const std::wstring& done, const std::wstring& file) {
    std::vector<PackageEntry> entries;
    const PackageResult listed = result.ok ? mxovshare::ListPackage(file, entries) : result;
    if (!listed.ok) {
        PrintFailure(listed);
        return kFailed;
    }
    PrintLine(done + L": " + Summary(entries));
    return kDone;
}

std::wstring RightAligned(const std::wstring& text, std::size_t width) {
    return std::wstring(width > text.size() ? width - text.size() : 0, L' ') + text;
}

void PrintEntry(const std::wstring& size, const std::wstring& packed, const std::wstring& time,
                const std::wstring& name) {
    PrintLine(RightAligned(size, 14) + L"  " + RightAligned(packed, 14) + L"  " + RightAligned(time, 19) +
              L"  " + name);
}

} // namespace

int Create(const std::wstring& folder, const std::wstring& file) {
    PackageResult result;
    {
        Progress progress(L"Packing");
        result = mxovshare::CreatePackage(folder, file, &progress);
    }
    return Finish(result, L"created " + file, file);
}

int Extract(const std::wstring& file, const std::wstring& folder) {
    PackageResult result;
    {
        Progress progress(L"Unpacking");
        result = mxovshare::UnpackPackage(file, folder, &progress);
    }
    return Finish(result, L"extracted to " + folder, file);
}

int List(const std::wstring& file) {
    std::vector<PackageEntry> entries;
    const PackageResult result = mxovshare::ListPackage(file, entries);
    if (!result.ok) {
        PrintFailure(result);
        return kFailed;
    }
    PrintEntry(L"Size", L"Packed", L"Modified (UTC)", L"Name");
    for (const PackageEntry& entry : entries) {
        PrintEntry(entry.isFolder ? L"" : std::to_wstring(entry.size),
                   entry.isFolder ? L"" : std::to_wstring(entry.packedSize), FormatFileTime(entry.modified),
                   entry.isFolder ? entry.name + L"\\" : entry.name);
    }
    PrintLine(Summary(entries));
    return kDone;
}
