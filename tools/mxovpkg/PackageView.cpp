#include "PackageView.h"

#include "Progress.h"
#include "Report.h"

#include <algorithm>

std::optional<PackageView> ReadPackage(const std::wstring& file) {
    PackageView view;
    mxovshare::PackageResult result = mxovshare::ListPackage(file, view.entries);
    if (result.ok) {
        result = mxovshare::ReadInformation(file, view.sections);
    }
    if (!result.ok) {
        PrintFailure(result);
        return {};
    }
    return view;
}

bool WriteChanged(const std::wstring& file, const std::wstring& target,
                  const mxovshare::PackageChanges& changes) {
    mxovshare::PackageResult result;
    {
        Progress progress(L"Packing");
        result = mxovshare::ChangePackage(file, target, changes, &progress);
    }
    if (!result.ok) {
        PrintFailure(result);
    }
    return result.ok;
}

std::wstring Summary(const std::vector<mxovshare::PackageEntry>& entries) {
    std::uint64_t size = 0;
    for (const mxovshare::PackageEntry& entry : entries) {
        size += entry.size;
    }
    const auto folders =
        static_cast<std::size_t>(std::ranges::count_if(entries, &mxovshare::PackageEntry::isFolder));
    std::wstring text = Count(entries.size() - folders, L"file");
    if (folders > 0) {
        text += L", " + Count(folders, L"empty folder");
    }
    return text + L", " + std::to_wstring(size) + L" bytes";
}
