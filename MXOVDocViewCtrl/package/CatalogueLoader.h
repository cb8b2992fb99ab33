// Reads the documents of a package from its information file and folders.
#pragma once

#include "CatalogueSource.h"
#include "ItemText.h"

#include <functional>
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

    // One document after the other: together they may take several times the memory of the information file.
    using ItemSink = std::function<void(CatalogueItem)>;
    /// All documents in the order of Load.
    void ForEachItem(const ItemSink& take);
    /// Those of one category.
    void ForEachItem(DocumentCategory category, const ItemSink& take);
    /// Records without what is known of the files of links.
    void ForEachRecord(DocumentCategory category, const std::function<void(DocumentRecord)>& take);

private:
    /// Asks the source, but not about files of a computer that has not answered before.
    FileStatus Status(const std::wstring& path);
    /// Gets a record, and the status of its file if it is known.
    using Sink = std::function<void(DocumentRecord, const FileStatus*)>;

    void ForEach(DocumentCategory category, const Sink& take);
    void FindPartAssembly(const Sink& take);
    void FindSetupSheets(const Sink& take);
    void FindGCode(const Sink& take);
    void FindInFolder(const std::wstring& folder, const std::vector<std::wstring>& names,
                      const std::wstring& description, DocumentCategory category, const Sink& take);
    void FindAdditionalDocuments(const Sink& take);
    CatalogueItem ItemOf(DocumentRecord record, const FileStatus& status) const;

    const CatalogueSource& m_source;
    const std::wstring& m_packageFolder;
    std::set<std::wstring> m_silent; // servers and drives
};

/// Whether a file counts as a setup sheet. The list is exact: ".docx", ".xlsx" and ".htm" are no setup
/// sheets.
bool IsSetupSheet(const std::wstring& name);

/// The first non-empty entry of a list separated by ";"; empty when there is none.
std::wstring FirstEntry(const std::wstring& list);

} // namespace docview

/// Reads one additional document from its section.
DocumentRecord ReadAdditionalDocument(const docview::CatalogueSource& source, const std::wstring& section);
