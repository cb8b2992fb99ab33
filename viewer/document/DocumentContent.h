// What can be shown of a document's file.
#pragma once

#include "common/Handles.h"
#include "document/TextLines.h"
#include "package/DocumentDetails.h"

namespace viewer {

struct DocumentContent {
    enum class Kind { Missing, Text, Picture, Other };

    DocumentDetails details;
    Kind kind = Kind::Other;
    std::vector<TextLine> lines;  ///< of a text
    bool isCut = false;           ///< the text goes on
    common::UniqueBitmap picture; ///< of a picture
};

/// Reads a document's file and closes it at once: the first megabyte of a text, pictures of up to 32 MB.
/// Called on a thread that is in a COM apartment.
[[nodiscard]] DocumentContent ReadContent(const DocumentDetails& details);

} // namespace viewer
