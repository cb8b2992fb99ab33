// The pixels that a window shows.
#pragma once

#include <windows.h>

#include <vector>

inline constexpr COLORREF kWhite = RGB(255, 255, 255);

/// A copy of the client area of a window with its children, as it stands on the screen surface.
class Picture {
public:
    /// The quality of a font whose text is compared: smoothed text need not look the same in each painting.
    static constexpr BYTE kTextQuality = NONANTIALIASED_QUALITY;

    explicit Picture(HWND window);

    /// The colour of a pixel; CLR_INVALID outside.
    COLORREF At(int x, int y) const;

    int Width() const { return m_width; }
    int Height() const { return m_height; }

    /// How many pixels of the rectangle have the colour.
    int Count(const RECT& rect, COLORREF colour) const;

    bool operator==(const Picture&) const = default;

private:
    int m_width;
    int m_height;
    std::vector<DWORD> m_pixels;
};
