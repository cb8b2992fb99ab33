#include "ArchiveCatalogueSource.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

using namespace docview;

namespace {

// Compares names as the file system does. The common prefix is skipped first: hostile names share long ones.
int Compare(std::wstring_view left, std::wstring_view right) {
    const auto [differing, other] = std::ranges::mismatch(left, right);
    left.remove_prefix(static_cast<std::size_t>(differing - left.begin()));
    right.remove_prefix(static_cast<std::size_t>(other - right.begin()));
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) -
           CSTR_EQUAL;
}

bool IsBefore(std::wstring_view left, std::wstring_view right) {
    return Compare(left, right) < 0;
}

bool HasPrefix(std::wstring_view text, std::wstring_view prefix) {
    return Compare(text.substr(0, prefix.size()), prefix) == 0;
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

constexpr auto kNameOf = [](const auto* named) -> const std::wstring& { return named->name; };

template <typename Named>
std::vector<const Named*> SortedByName(const std::vector<Named>& all) {
    std::vector<const Named*> sorted(all.size());
    std::ranges::transform(all, sorted.begin(), [](const Named& named) { return &named; });
    std::ranges::sort(sorted, IsBefore, kNameOf);
    return sorted;
}

} // namespace

const std::wstring ArchiveCatalogueSource::kFolder = L"<package>\\";

ArchiveCatalogueSource::ArchiveCatalogueSource(const std::vector<mxovshare::PackageEntry>& entries,
                                               const std::vector<mxovshare::InformationSection>& sections)
    : m_entries(SortedByName(entries)), m_sections(sections), m_sectionsByName(SortedByName(sections)) {}

ArchiveCatalogueSource::Entries::const_iterator
ArchiveCatalogueSource::LowerBound(const std::wstring& path) const {
    return std::ranges::lower_bound(m_entries, path, IsBefore, kNameOf);
}

std::wstring ArchiveCatalogueSource::Value(const std::wstring& section, const std::wstring& key) const {
    const auto found = std::ranges::lower_bound(m_sectionsByName, section, IsBefore, kNameOf);
    if (found == m_sectionsByName.end() || Compare((*found)->name, section) != 0) {
        return {};
    }
    const auto& values = (*found)->values;
    const auto value =
        std::ranges::find_if(values, [&key](const auto& pair) { return Compare(pair.first, key) == 0; });
    return value != values.end() ? value->second : std::wstring();
}

std::vector<std::wstring> ArchiveCatalogueSource::SectionNames(const std::wstring& prefix) const {
    std::vector<std::wstring> names;
    for (const mxovshare::InformationSection& section : m_sections) {
        if (HasPrefix(section.name, prefix)) {
            names.push_back(section.name);
        }
    }
    return names;
}

FileStatus ArchiveCatalogueSource::Status(const std::wstring& path) const {
    const auto inside = InPackage(path);
    if (!inside) {
        return IsOnDrive(path) ? m_disk.Status(path) : FileStatus();
    }
    if (inside->empty()) {
        return {.exists = true, .isFolder = true};
    }
    const auto found = LowerBound(*inside);
    if (found != m_entries.end() && Compare((*found)->name, *inside) == 0) {
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
