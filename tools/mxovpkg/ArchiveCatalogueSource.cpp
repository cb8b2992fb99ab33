#include "ArchiveCatalogueSource.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace {

bool IsEqual(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool HasPrefix(const std::wstring& text, const std::wstring& prefix) {
    return text.size() >= prefix.size() && IsEqual(text.substr(0, prefix.size()), prefix);
}

// The path inside the package with single separators; none for a path that lies elsewhere.
std::optional<std::wstring> InPackage(const std::wstring& path) {
    if (!path.starts_with(ArchiveCatalogueSource::kFolder))
        return {};
    std::wstring inside;
    for (wchar_t unit : path.substr(ArchiveCatalogueSource::kFolder.size())) {
        if (unit == L'/')
            unit = L'\\';
        if (unit != L'\\' || (!inside.empty() && inside.back() != L'\\'))
            inside += unit;
    }
    if (inside.ends_with(L'\\'))
        inside.pop_back();
    return inside;
}

bool IsFullPath(const std::wstring& path) {
    return (path.size() > 2 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/')) ||
           path.starts_with(L"\\\\");
}

} // namespace

const std::wstring ArchiveCatalogueSource::kFolder = L"<package>\\";

bool ArchiveCatalogueSource::ByName::operator()(const std::wstring& left, const std::wstring& right) const {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_LESS_THAN;
}

ArchiveCatalogueSource::ArchiveCatalogueSource(const std::vector<mxovshare::PackageEntry>& entries,
                                               std::vector<mxovshare::InformationSection> sections)
    : m_sections(std::move(sections)) {
    for (const mxovshare::PackageEntry& entry : entries) {
        m_files[entry.name] = {
            .exists = true, .isFolder = entry.isFolder, .size = entry.size, .lastWrite = entry.modified};
        for (std::size_t cut = entry.name.rfind(L'\\'); cut != std::wstring::npos && cut > 0;
             cut = entry.name.rfind(L'\\', cut - 1))
            m_files.try_emplace(entry.name.substr(0, cut), FileStatus{.exists = true, .isFolder = true});
    }
}

std::wstring ArchiveCatalogueSource::Value(const std::wstring& section, const std::wstring& key) const {
    for (const mxovshare::InformationSection& candidate : m_sections) {
        if (!IsEqual(candidate.name, section))
            continue;
        const auto value = std::ranges::find_if(
            candidate.values, [&key](const auto& pair) { return IsEqual(pair.first, key); });
        if (value != candidate.values.end())
            return value->second;
    }
    return {};
}

std::vector<std::wstring> ArchiveCatalogueSource::SectionNames(const std::wstring& prefix) const {
    std::vector<std::wstring> names;
    for (const mxovshare::InformationSection& section : m_sections) {
        if (HasPrefix(section.name, prefix))
            names.push_back(section.name);
    }
    return names;
}

FileStatus ArchiveCatalogueSource::Status(const std::wstring& path) const {
    const auto inside = InPackage(path);
    if (!inside)
        return IsFullPath(path) ? m_disk.Status(path) : FileStatus();
    if (inside->empty())
        return {.exists = true, .isFolder = true};
    const auto found = m_files.find(*inside);
    return found != m_files.end() ? found->second : FileStatus();
}

int ArchiveCatalogueSource::FileSize(const std::wstring& path) const {
    const FileStatus status = Status(path);
    if (!status.exists || status.isFolder)
        return 0;
    return static_cast<int>(std::min<std::uint64_t>(status.size, std::numeric_limits<int>::max()));
}

std::vector<std::wstring> ArchiveCatalogueSource::FileNames(const std::wstring& folder) const {
    std::vector<std::wstring> names;
    const auto inside = InPackage(folder + L"\\");
    if (!inside)
        return names;
    const std::wstring prefix = inside->empty() ? std::wstring() : *inside + L"\\";
    for (const auto& [path, status] : m_files) {
        if (!status.isFolder && HasPrefix(path, prefix) &&
            path.find(L'\\', prefix.size()) == std::wstring::npos)
            names.push_back(path.substr(prefix.size()));
    }
    return names;
}
