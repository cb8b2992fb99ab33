#include "window/Painting.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace viewer {

namespace {

LOGFONTW MessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0, dpi);
    return metrics.lfMessageFont;
}

RECT Fit(SIZE picture, const RECT& area) {
    const double width = area.right - area.left;
    const double height = area.bottom - area.top;
    const double factor = std::min({width / picture.cx, height / picture.cy, 1.0});
    const LONG fitWidth = std::max(1L, static_cast<LONG>(picture.cx * factor));
    const LONG fitHeight = std::max(1L, static_cast<LONG>(picture.cy * factor));
    const LONG left = (area.left + area.right - fitWidth) / 2;
    const LONG top = (area.top + area.bottom - fitHeight) / 2;
    return {left, top, left + fitWidth, top + fitHeight};
}

} // namespace

BufferedPaint::BufferedPaint(HWND window) : m_window(window) {
    const HDC dc = BeginPaint(window, &m_paint);
    GetClientRect(window, &m_area);
    m_surface.reset(CreateCompatibleBitmap(dc, std::max(1L, m_area.right), std::max(1L, m_area.bottom)));
    m_memory.reset(CreateCompatibleDC(dc));
    SelectObject(m_memory.get(), m_surface.get());
}

BufferedPaint::~BufferedPaint() {
    BitBlt(m_paint.hdc, 0, 0, m_area.right, m_area.bottom, m_memory.get(), 0, 0, SRCCOPY);
    EndPaint(m_window, &m_paint);
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

int Write(HDC dc, HFONT font, COLORREF colour, const std::wstring& text, RECT area, UINT format) {
    const SavedState saved(dc);
    SelectObject(dc, font);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    return DrawTextW(dc, text.c_str(), -1, &area, format | DT_NOPREFIX);
}

void WriteCentred(HDC dc, HFONT font, COLORREF colour, const std::wstring& text, const RECT& area) {
    RECT needed = area;
    {
        const SavedState saved(dc);
        SelectObject(dc, font);
        DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    }
    RECT place = area;
    place.top += std::max(0L, (area.bottom - area.top - (needed.bottom - needed.top)) / 2);
    Write(dc, font, colour, text, place, DT_CENTER | DT_WORDBREAK);
}

void WriteOnAxis(HDC dc, HFONT font, COLORREF colour, const std::wstring& line, int axis, int top) {
    const SavedState saved(dc);
    SelectObject(dc, font);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    const int length = static_cast<int>(line.size());
    std::vector<INT> widths(line.size()); // at first up to the end of each character
    SIZE size = {};
    GetTextExtentExPointW(dc, line.c_str(), length, 0, nullptr, widths.data(), &size);
    std::adjacent_difference(widths.begin(), widths.end(), widths.begin());
    ExtTextOutW(dc, axis - static_cast<int>(size.cx) / 2, top, 0, nullptr, line.c_str(),
                static_cast<UINT>(length), widths.data());
}

void DrawPicture(HDC dc, HBITMAP picture, const RECT& area) {
    BITMAP bitmap = {};
    if (area.right <= area.left || area.bottom <= area.top || !GetObjectW(picture, sizeof bitmap, &bitmap)) {
        return;
    }
    const RECT place = Fit({bitmap.bmWidth, bitmap.bmHeight}, area);
    const common::UniqueMemoryDc source(CreateCompatibleDC(dc));
    const SavedState savedSource(source.get());
    const SavedState saved(dc);
    SelectObject(source.get(), picture);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchBlt(dc, place.left, place.top, place.right - place.left, place.bottom - place.top, source.get(), 0,
               0, bitmap.bmWidth, bitmap.bmHeight, SRCCOPY);
}

common::UniqueFont MakeMessageFont(UINT dpi) {
    const LOGFONTW font = MessageFont(dpi);
    return common::UniqueFont(CreateFontIndirectW(&font));
}

common::UniqueFont MakeHeadingFont(UINT dpi) {
    LOGFONTW font = MessageFont(dpi);
    font.lfHeight *= 2;
    font.lfWeight = FW_BOLD;
    return common::UniqueFont(CreateFontIndirectW(&font));
}

int LineHeight(HWND window, HFONT font) {
    TEXTMETRICW metrics = {};
    GetTextMetricsW(TextContext(window, font).Dc(), &metrics);
    return metrics.tmHeight;
}

SIZE TextSize(HWND window, HFONT font, const std::wstring& line) {
    SIZE size = {};
    GetTextExtentPoint32W(TextContext(window, font).Dc(), line.c_str(), static_cast<int>(line.size()), &size);
    return size;
}

int WrappedHeight(HWND window, HFONT font, const std::wstring& text, int width) {
    RECT area = {0, 0, std::max(1, width), 0};
    DrawTextW(TextContext(window, font).Dc(), text.c_str(), -1, &area,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return area.bottom;
}

} // namespace viewer
