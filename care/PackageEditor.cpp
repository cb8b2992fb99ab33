#include "care/PackageEditor.h"

#include <package/PackageInformation.h>

using namespace docview;

namespace care {

PackageEditor::PackageEditor(Sections sections, const std::vector<mxovshare::PackageEntry>& entries)
    : m_sections(std::move(sections)) {
    for (const mxovshare::PackageEntry& entry : entries) {
        if (!entry.isFolder) {
            m_files.emplace(entry.name, true);
        }
    }
}

std::wstring PackageEditor::FileInfo(std::wstring_view key) const {
    return m_sections.Value(inikey::kFileInfo, key);
}

std::wstring PackageEditor::FindFile(const std::wstring& name) const {
    const auto found = m_files.find(name);
    return found != m_files.end() ? found->first : std::wstring();
}

std::vector<std::wstring> PackageEditor::FilesIn(const std::wstring& folder) const {
    std::vector<std::wstring> names;
    for (auto file = m_files.lower_bound(folder); file != m_files.end() && HasPrefix(file->first, folder);
         ++file) {
        if (file->first.find(L'\\', folder.size()) == std::wstring::npos) {
            names.push_back(file->first);
        }
    }
    return names;
}

void PackageEditor::SetKey(const std::wstring& section, const std::wstring& key, const std::wstring& value) {
    m_information.push_back({section, key, value});
    m_sections.SetValue(section, key, value);
}

void PackageEditor::RemoveSection(const std::wstring& section) {
    m_information.push_back({section, {}, {}});
    m_sections.RemoveSection(section);
}

void PackageEditor::AddFile(const std::wstring& name, const std::wstring& path) {
    m_files.emplace(name, false);
    m_added.insert_or_assign(name, path);
}

void PackageEditor::RemoveFile(const std::wstring& name) {
    const auto file = m_files.find(name);
    if (file == m_files.end()) {
        return;
    }
    m_added.erase(name);
    if (file->second) {
        m_removed.push_back(file->first);
    }
    m_files.erase(file);
}

mxovshare::PackageChanges PackageEditor::Changes() const {
    mxovshare::PackageChanges changes;
    for (const auto& [name, path] : m_added) {
        changes.added.push_back({name, path});
    }
    changes.removed = m_removed;
    changes.information = m_information;
    return changes;
}

} // namespace care
