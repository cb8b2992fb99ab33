// One document of a package and one entry of the package's history, as plain values.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Selects the record list, the list view and the information-file keys of a document.
enum class DocumentCategory : std::int32_t {
    PartAssembly = 1,
    GCode = 2,
    SetupSheets = 3,
    AdditionalDocument = 4,
};

/// One document in memory; copied by value wherever it is handed on.
struct DocumentRecord {
    std::wstring sectionName; ///< "FILEINFO", or the document's own "REFERANCE_FILE_n"
    std::wstring fileName;    ///< name shown in the list
    std::wstring timestamp;   ///< text of the date column
    std::wstring filePath;    ///< full, or relative to the package folder for a copied additional document
    std::wstring description;
    std::int32_t isReferenced =
        0; ///< 1 when the package only points at the file, 0 when the file lies in the package
    std::int32_t isAdditional = 0; ///< 1 when the record has a section of its own
    DocumentCategory category = DocumentCategory::PartAssembly;
};

namespace docview {

/// The documents of one category; item i of a list view is element i of its category's list.
using RecordList = std::vector<DocumentRecord>;

/// One entry of the package's history, texts as stored.
struct HistoryEntry {
    std::wstring operation;
    std::wstring time;
    std::wstring by;
    std::wstring remarks;
};

} // namespace docview
