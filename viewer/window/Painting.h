// Drawing that several panes share.
#pragma once

#include "common/Handles.h"

#include <string>

#include <windows.h>

namespace viewer {

/// The current objects and colours of a device context, put back at the end.
class SavedState {
public:
    explicit SavedState(HDC dc) : m_dc(dc), m_saved(SaveDC(dc)) {}
    ~SavedState() { RestoreDC(m_dc, m_saved); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

/// The device context of a window with a font selected, to measure texts.
class TextContext {
public:
    TextContext(HWND window, HFONT font)
        : m_window(window), m_dc(GetDC(window)), m_oldFont(SelectObject(m_dc, font)) {}
    ~TextContext() {
        SelectObject(m_dc, m_oldFont);
        ReleaseDC(m_window, m_dc);
    }
    TextContext(const TextContext&) = delete;
    TextContext& operator=(const TextContext&) = delete;
    [[nodiscard]] HDC Dc() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
    HGDIOBJ m_oldFont;
};

/// A device context to paint a window with, shown at the end as a whole, so that nothing flickers while the
/// window is being sized. Lives in WM_PAINT.
class BufferedPaint {
public:
    explicit BufferedPaint(HWND window);
    ~BufferedPaint();
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;

    [[nodiscard]] HDC Dc() const { return m_memory.get(); }
    [[nodiscard]] const RECT& Area() const { return m_area; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint = {};
    RECT m_area = {};
    common::UniqueBitmap m_surface; // outlives the context that it is selected into
    common::UniqueMemoryDc m_memory;
};

void Fill(HDC dc, const RECT& area, COLORREF colour);

/// Writes a text as DrawText does and returns its height; an ampersand is a character like any other.
int Write(HDC dc, HFONT font, COLORREF colour, const std::wstring& text, RECT area, UINT format);

/// Writes a text of several lines into the middle of an area.
void WriteCentred(HDC dc, HFONT font, COLORREF colour, const std::wstring& text, const RECT& area);

/// Writes one line with its middle at `axis`. Each character takes the width that it is measured with, also
/// where the system would draw a text narrower.
void WriteOnAxis(HDC dc, HFONT font, COLORREF colour, const std::wstring& line, int axis, int top);

/// Draws a picture in the middle of an area: as large as fits, in its proportions, and not enlarged.
void DrawPicture(HDC dc, HBITMAP picture, const RECT& area);

/// The system's font for messages at some dots per inch, and the same twice as large for headings.
[[nodiscard]] common::UniqueFont MakeMessageFont(UINT dpi);
[[nodiscard]] common::UniqueFont MakeHeadingFont(UINT dpi);

/// The height of a line, in pixels.
[[nodiscard]] int LineHeight(HWND window, HFONT font);

/// The width and height of one line, in pixels.
[[nodiscard]] SIZE TextSize(HWND window, HFONT font, const std::wstring& line);

/// The height of a text in an area of this width, where its lines are broken between words, in pixels.
[[nodiscard]] int WrappedHeight(HWND window, HFONT font, const std::wstring& text, int width);

} // namespace viewer
