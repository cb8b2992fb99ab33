// What can be shown of a document's file.
#pragma once

#include "common/Handles.h"
#include "document/TextLines.h"
#include "handler/PreviewedDocument.h"
#include "package/DocumentDetails.h"

namespace viewer {

struct DocumentContent {
    enum class Kind { Missing, Text, Picture, Previewed, Other };

    DocumentDetails details;
    Kind kind = Kind::Other;
    std::vector<TextLine> lines;  ///< of a text
    bool isCut = false;           ///< the text goes on
    common::UniqueBitmap picture; ///< of a picture
    PreviewedDocument preview;    ///< of what a preview handler shows
    bool isFromOutside = false;   ///< of another kind, which a handler would show without its mark of the web
};

/// Reads a document's file and closes it at once: the first megabyte of a text; pictures, and what a
/// preview handler is registered for, of up to 32 MB.
/// Called on a thread that is in a COM apartment.
[[nodiscard]] DocumentContent ReadContent(const DocumentDetails& details);

} // namespace viewer
