// A document for a preview handler.
#pragma once

#include <windows.h>

#include <string>

namespace viewer {

struct PreviewedDocument {
    CLSID handler = {};
    std::wstring path; ///< full
    std::string bytes; ///< of the whole file
};

} // namespace viewer
