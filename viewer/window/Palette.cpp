#include "window/Palette.h"

namespace viewer {

namespace {

bool IsHighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

} // namespace

Palette CurrentPalette() {
    return MakePalette(IsHighContrast());
}

Palette MakePalette(bool highContrast) {
    const COLORREF cardText = GetSysColor(COLOR_WINDOWTEXT);
    return {.page = GetSysColor(COLOR_BTNFACE),
            .text = GetSysColor(COLOR_BTNTEXT),
            .card = GetSysColor(COLOR_WINDOW),
            .cardEdge = GetSysColor(COLOR_BTNSHADOW),
            .cardText = cardText,
            .comment = highContrast ? cardText : RGB(0, 128, 0),
            .tool = highContrast ? cardText : RGB(176, 48, 0),
            .blockNumber = highContrast ? cardText : RGB(128, 128, 128)};
}

} // namespace viewer
