// What the viewer shows of a package besides the document lists.
#pragma once

#include "mxovpackage.h"

#include <string>
#include <vector>

namespace viewer {

struct PackageSummary {
    std::wstring name;        ///< the package file's name without its extension
    std::wstring version;     ///< program and version that wrote the package; may be empty
    std::wstring previewFile; ///< full path of the preview picture; empty for none
    std::wstring lastChange;  ///< newest entry of the edit history as one line; may be empty
};

/// Reads the summary from the information file of an unpacked package. `folder` ends with a separator.
[[nodiscard]] PackageSummary ReadPackageSummary(const std::wstring& folder, const std::wstring& packageFile);

/// Who made the newest history entry of a package file, when its unpacked `folder`, which ends with a
/// separator, does not have that entry; else empty.
[[nodiscard]] std::wstring LastSaver(const std::wstring& packageFile, const std::wstring& folder);

/// The number of the package's files and their size as one text, such as "12 files, 48.2 KB"; empty for none.
[[nodiscard]] std::wstring CountsText(const std::vector<mxovshare::PackageEntry>& entries);

/// What there is to know of a package as a whole, one fact a line. `folder` ends with a separator.
[[nodiscard]] std::wstring PropertiesText(const std::wstring& folder, const std::wstring& packageFile,
                                          const std::vector<mxovshare::PackageEntry>& entries);

} // namespace viewer
