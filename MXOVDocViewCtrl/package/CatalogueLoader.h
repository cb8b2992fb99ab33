// Reads the documents of a package from its information file and folders.
#pragma once

#include "CatalogueSource.h"
#include "ItemText.h"

#include <set>

namespace docview {

/// Loads the documents of one package. Holds references: source and folder must outlive it.
class CatalogueLoader {
public:
    /// `packageFolder` is joined to the stored paths as it stands; a host normally passes it with a trailing
    /// "\".
    CatalogueLoader(const CatalogueSource& source, const std::wstring& packageFolder);

    /// All documents in the order Part / Assembly, setup sheets, G-code, additional documents.
    std::vector<CatalogueItem> Load();

private:
    /// Asks the source, but not about files of a computer that has not answered before in this load.
    FileStatus Status(const std::wstring& path);
    void AddPartAssembly();
    void AddSetupSheets();
    void AddGCode();
    void AddFolder(const std::wstring& folder, const std::vector<std::wstring>& names,
                   const std::wstring& description, DocumentCategory category);
    void AddAdditionalDocuments();
    void Add(DocumentRecord record, const FileStatus& status, int image);

    const CatalogueSource& m_source;
    const std::wstring& m_packageFolder;
    std::set<std::wstring> m_silent; // servers and drives
    std::vector<CatalogueItem> m_items;
};

/// Whether a file counts as a setup sheet. The list is exact: ".docx", ".xlsx" and ".htm" are no setup
/// sheets.
bool IsSetupSheet(const std::wstring& name);

/// The first non-empty entry of a list separated by ";"; empty when there is none.
std::wstring FirstEntry(const std::wstring& list);

} // namespace docview

/// Reads one additional document from its section.
DocumentRecord ReadAdditionalDocument(const docview::CatalogueSource& source, const std::wstring& section);
