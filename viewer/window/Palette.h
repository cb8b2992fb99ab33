// The colours of the viewer's own windows: the system's, as they are when a window paints.
#pragma once

#include <windows.h>

namespace viewer {

struct Palette {
    COLORREF page;        ///< behind everything
    COLORREF text;        ///< on the page
    COLORREF card;        ///< behind pictures and texts of documents
    COLORREF cardEdge;    ///< around it
    COLORREF cardText;    ///< on the card, as the next three
    COLORREF comment;     ///< in a document's text
    COLORREF tool;        ///< a tool call there
    COLORREF blockNumber; ///< the number of a block there
    COLORREF removed;     ///< behind a line that a newer text lacks, as the next three between card and text
    COLORREF added;       ///< behind a line that only a newer text has
    COLORREF changed;     ///< behind a line that took the place of another one
    COLORREF frame;       ///< around what is looked at
};

/// The palette for now.
[[nodiscard]] Palette CurrentPalette();

/// The palette with high contrast or without. With it nothing in a document's text, and no line, is
/// tinted.
[[nodiscard]] Palette MakePalette(bool highContrast);

} // namespace viewer
