// What cures the findings of a check.
#pragma once

#include "care/check/Findings.h"
#include "care/CopyNames.h"
#include "care/PackageEditor.h"

namespace care {

enum class Cure {
    Find,     ///< another file takes the document's place
    MakeCopy, ///< the document gets a copy of its own in the package
    Remove,   ///< the document, or the file that nothing shows
    Attach,   ///< the file becomes an additional document
    SetDate,  ///< the document is recorded with the date that its file has
};

/// The cures that a finding offers, the usual one first.
std::vector<Cure> CuresOf(const Finding& finding);

/// Whether a package still holds what was found in it.
bool IsCurrent(const Finding& finding, const PackageContent& content);

/// Edits a package that was unpacked into a folder.
class FindingCure {
public:
    /// `content` is what the folder holds, which ends with a separator.
    FindingCure(const PackageContent& content, std::wstring folder);

    /// Cures a finding by one of the cures that it offers; `path` is that of the file that was found. Throws
    /// Refusal when a file cannot be used.
    void Apply(Cure cure, const Finding& finding, const std::wstring& path);

    /// What was changed so far. Paths of added files are full.
    mxovshare::PackageChanges Changes() const { return m_editor.Changes(); }

private:
    void Find(const Finding& finding, const std::wstring& path);
    void MakeCopy(const Finding& finding);
    void Remove(const Finding& finding);
    void Attach(const Finding& finding);
    void SetDate(const Finding& finding);
    bool IsInPackage(const Finding& finding) const;
    void ReplaceCopy(const Finding& finding, const std::wstring& path);
    std::wstring PathOf(const Finding& finding) const;

    PackageEditor m_editor;
    CopyNames m_names;
    std::wstring m_folder;
};

} // namespace care
