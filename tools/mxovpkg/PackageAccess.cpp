#include "PackageAccess.h"

#include "output/Progress.h"
#include "output/Report.h"

#include <algorithm>

std::optional<care::PackageContent> ReadPackage(const std::wstring& path) {
    care::PackageContent content;
    Progress progress(L"Reading");
    const mxovshare::PackageResult result =
        mxovshare::ReadContent(path, content.entries, content.sections, &progress);
    if (!result.ok) {
        PrintFailure(result);
        return {};
    }
    return content;
}

std::optional<care::Texts> ReadTexts(const std::wstring& path, const std::vector<std::wstring>& names) {
    care::Texts texts;
    if (names.empty()) {
        return texts; // without reading the directory again
    }
    const mxovshare::PackageResult result = mxovshare::ReadContentFiles(
        path, names, care::kLargestComparedText,
        [&texts](const std::wstring& name, std::string bytes) { texts.emplace(name, std::move(bytes)); });
    if (!result.ok) {
        PrintFailure(result);
        return {};
    }
    return texts;
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
