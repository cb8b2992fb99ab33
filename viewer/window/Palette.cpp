#include "window/Palette.h"

namespace viewer {

namespace {

bool IsHighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

// A quarter of a hue on a colour of the system, which keeps the contrast of what is written there.
COLORREF Tinted(COLORREF base, COLORREF hue) {
    constexpr int kParts = 4;
    const auto mixed = [](int of, int with) { return (of * (kParts - 1) + with) / kParts; };
    return RGB(mixed(GetRValue(base), GetRValue(hue)), mixed(GetGValue(base), GetGValue(hue)),
               mixed(GetBValue(base), GetBValue(hue)));
}

} // namespace

Palette CurrentPalette() {
    return MakePalette(IsHighContrast());
}

Palette MakePalette(bool highContrast) {
    const COLORREF cardText = GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF card = GetSysColor(COLOR_WINDOW);
    return {.page = GetSysColor(COLOR_BTNFACE),
            .text = GetSysColor(COLOR_BTNTEXT),
            .card = card,
            .cardEdge = GetSysColor(COLOR_BTNSHADOW),
            .cardText = cardText,
            .comment = highContrast ? cardText : RGB(0, 128, 0),
            .tool = highContrast ? cardText : RGB(176, 48, 0),
            .blockNumber = highContrast ? cardText : RGB(128, 128, 128),
            .removed = highContrast ? card : Tinted(card, RGB(224, 48, 32)),
            .added = highContrast ? card : Tinted(card, RGB(32, 160, 64)),
            .changed = highContrast ? card : Tinted(card, RGB(240, 176, 0)),
            .frame = GetSysColor(COLOR_HIGHLIGHT)};
}

} // namespace viewer
