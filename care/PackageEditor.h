// Editing the catalogue of a package in memory, as changes to be written in one step.
#pragma once

#include "care/Information.h"

#include <mxovchange.h>

#include <map>

namespace care {

/// Thrown when a package cannot be edited as asked; the message is one line.
struct Refusal {
    std::wstring message;
};

/// Collects changes; every edit sees those before it.
class PackageEditor {
public:
    PackageEditor(Sections sections, const std::vector<mxovshare::PackageEntry>& entries);

    const Sections& Information() const { return m_sections; }
    /// The value of a key of [FILEINFO].
    std::wstring FileInfo(std::wstring_view key) const;
    /// The name of a file as the package spells it; empty when the package does not contain it.
    std::wstring FindFile(const std::wstring& name) const;
    /// The names of the files directly inside a folder, which is empty or ends with a separator.
    std::vector<std::wstring> FilesIn(const std::wstring& folder) const;

    void SetKey(const std::wstring& section, const std::wstring& key, const std::wstring& value);
    void RemoveSection(const std::wstring& section);
    /// Packs the file `path` under `name`, in place of an older one.
    void AddFile(const std::wstring& name, const std::wstring& path);
    void RemoveFile(const std::wstring& name);

    /// What was changed so far.
    mxovshare::PackageChanges Changes() const;

private:
    Sections m_sections;
    std::map<std::wstring, bool, NameLess> m_files; // whether the package contained it before
    std::map<std::wstring, std::wstring, NameLess> m_added;
    std::vector<std::wstring> m_removed;
    std::vector<mxovshare::InformationChange> m_information;
};

} // namespace care
