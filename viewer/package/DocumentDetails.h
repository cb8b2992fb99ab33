// A document of an unpacked package, and where its file lies.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <windows.h>

namespace viewer {

/// A row in one of the four lists of the control, both counted from 0.
struct DocumentRow {
    int list = 0;
    int row = 0;
    bool operator==(const DocumentRow&) const = default;
};

struct DocumentDetails {
    std::wstring name;
    std::wstring path;      ///< full
    std::wstring section;   ///< of the information file
    bool isProgram = false; ///< listed as G code, whatever its extension
    bool isLink = false;    ///< lies outside the package
    bool exists = false;    ///< the next two mean nothing when it does not
    std::uint64_t size = 0; ///< bytes
    FILETIME modified = {}; ///< last write, UTC
};

/// Whether two details are of the same state of the same file.
[[nodiscard]] bool IsSameState(const DocumentDetails& left, const DocumentDetails& right);

/// The document that the control shows in a row for the package in `folder`, which ends with a separator;
/// nothing when there is none.
[[nodiscard]] std::optional<DocumentDetails> FindDocument(const std::wstring& folder, DocumentRow row);

/// Points a linked document of the package at another file.
void Relink(const std::wstring& folder, const DocumentDetails& document, const std::wstring& path);

} // namespace viewer
