// What the viewer itself shows of a package, beside the document lists.
#pragma once

#include <string>

namespace viewer {

struct PackageSummary {
    std::wstring name;        ///< the package file's name without its extension
    std::wstring version;     ///< program and version that wrote the package; may be empty
    std::wstring previewFile; ///< full path of the preview picture; empty for none
    std::wstring lastChange;  ///< newest entry of the edit history as one line; may be empty
};

/// Reads the summary from the information file of an unpacked package. `folder` ends with a separator.
[[nodiscard]] PackageSummary ReadPackageSummary(const std::wstring& folder, const std::wstring& packageFile);

} // namespace viewer
