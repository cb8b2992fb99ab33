#include "ArchiveCatalogueSource.h"

#include <care/Information.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

using namespace docview;

namespace {

bool HasPrefix(std::wstring_view text, std::wstring_view prefix) {
    return care::CompareNames(text.substr(0, prefix.size()), prefix) == 0;
}

// The path inside the package with single separators; none for a path outside it.
std::optional<std::wstring> InPackage(const std::wstring& path) {
    if (!path.starts_with(ArchiveCatalogueSource::kFolder)) {
        return {};
    }
    std::wstring inside;
    for (wchar_t unit : path.substr(ArchiveCatalogueSource::kFolder.size())) {
        if (unit == L'/') {
            unit = L'\\';
        }
        if (unit != L'\\' || (!inside.empty() && inside.back() != L'\\')) {
            inside += unit;
        }
    }
    if (inside.ends_with(L'\\')) {
        inside.pop_back();
    }
    return inside;
}

bool IsOnDrive(const std::wstring& path) {
    return path.size() > 2 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
}

constexpr auto kNameOf = [](const mxovshare::PackageEntry* entry) -> const std::wstring& {
    return entry->name;
};

} // namespace

const std::wstring ArchiveCatalogueSource::kFolder = L"<package>\\";

ArchiveCatalogueSource::ArchiveCatalogueSource(const std::vector<mxovshare::PackageEntry>& entries,
                                               const mxovshare::Information& information)
    : m_entries(entries.size()), m_information(information) {
    std::ranges::transform(entries, m_entries.begin(), [](const auto& entry) { return &entry; });
    std::ranges::sort(m_entries, care::NameLess(), kNameOf);
}

ArchiveCatalogueSource::Entries::const_iterator
ArchiveCatalogueSource::LowerBound(const std::wstring& path) const {
    return std::ranges::lower_bound(m_entries, path, care::NameLess(), kNameOf);
}

std::wstring ArchiveCatalogueSource::Value(const std::wstring& section, const std::wstring& key) const {
    return m_information.Value(section, key);
}

std::vector<std::wstring> ArchiveCatalogueSource::SectionNames(const std::wstring& prefix) const {
    return m_information.SectionNames(prefix);
}

FileStatus ArchiveCatalogueSource::Status(const std::wstring& path) const {
    const auto inside = InPackage(path);
    if (!inside) {
        return IsOnDrive(path) ? StatusOfFile(path) : FileStatus();
    }
    if (inside->empty()) {
        return {.exists = true, .isFolder = true};
    }
    const auto found = LowerBound(*inside);
    if (found != m_entries.end() && care::CompareNames((*found)->name, *inside) == 0) {
        const mxovshare::PackageEntry& entry = **found;
        return {.exists = true, .isFolder = entry.isFolder, .size = entry.size, .lastWrite = entry.modified};
    }
    const std::wstring folder = *inside + L"\\";
    const auto within = LowerBound(folder);
    const bool exists = within != m_entries.end() && HasPrefix((*within)->name, folder);
    return {.exists = exists, .isFolder = exists};
}

int ArchiveCatalogueSource::FileSize(const std::wstring& path) const {
    const FileStatus status = Status(path);
    if (!status.exists || status.isFolder) {
        return 0;
    }
    return static_cast<int>(std::min<std::uint64_t>(status.size, std::numeric_limits<int>::max()));
}

std::vector<std::wstring> ArchiveCatalogueSource::FileNames(const std::wstring& folder) const {
    std::vector<std::wstring> names;
    const auto inside = InPackage(folder + L"\\");
    if (!inside) {
        return names;
    }
    const std::wstring prefix = inside->empty() ? std::wstring() : *inside + L"\\";
    for (auto at = LowerBound(prefix); at != m_entries.end() && HasPrefix((*at)->name, prefix); ++at) {
        const mxovshare::PackageEntry& entry = **at;
        if (!entry.isFolder && entry.name.find(L'\\', prefix.size()) == std::wstring::npos) {
            names.push_back(entry.name.substr(prefix.size()));
        }
    }
    return names;
}
