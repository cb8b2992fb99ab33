// The documents of a package as changes of it: adding and removing.
#pragma once

#include "care/PackageEditor.h"

namespace care {

/// What the section of an additional document holds.
struct Document {
    std::wstring section;
    bool isCopy = false;
    std::wstring description;
    std::wstring timestamp;
    std::wstring path;
};

/// The keys of a document in the order in which the format has them.
std::vector<mxovshare::InformationChange> KeysOf(const Document& document);

/// The description of a document that nobody has described, as the control adds it.
inline constexpr wchar_t kNoDescription[] = L"-";

/// The last write of a file that becomes a document, as the format has it. Throws Refusal for what is no
/// file.
std::wstring DateOfFile(const std::wstring& path);

/// How a file becomes a document.
enum class DocumentKind {
    Copy, ///< an additional document inside the package
    Link, ///< an additional document outside
    Part,
    GCode,
    SetupSheet,
};

struct NewDocument {
    DocumentKind kind = DocumentKind::Copy;
    std::wstring path; ///< of the file on the disk
    std::wstring description;
    bool hasDescription = false;
    bool replaces = false; ///< may take the place of a document of the same name
};

/// Adds a document and returns the path that the package has for it. Throws Refusal for a file that does not
/// exist or that the section does not show, and for a name that is taken.
std::wstring AddDocument(PackageEditor& editor, const NewDocument& document);

/// Removes the document that `word` names: a section or its number, a path as the package has it, or a file
/// name. A copy that another document shows stays. Returns its path. Throws Refusal when none or several
/// match.
std::wstring RemoveDocument(PackageEditor& editor, const std::wstring& word);

/// Removes the part, which the format holds as a path only.
void RemovePart(PackageEditor& editor);

/// The entries of a list of files separated by ";", empty ones too; none behind a separator at the end.
std::vector<std::wstring> EntriesOfList(const std::wstring& list);

/// The folder of a list of files separated by ";", which is that of its first entry, with its separator;
/// `usual` when the list is empty.
std::wstring FolderOfList(const std::wstring& list, const std::wstring& usual);

/// Whether a file lies in the folder of the list that FILEINFO has under `key`, so that it is shown there.
bool IsInListFolder(const std::wstring& file, const Sections& sections, std::wstring_view key);

} // namespace care
