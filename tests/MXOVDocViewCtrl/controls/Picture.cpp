#include "Picture.h"

Picture::Picture(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    m_width = client.right;
    m_height = client.bottom;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = m_width;
    info.bmiHeader.biHeight = -m_height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC source = GetDC(window);
    HDC memory = CreateCompatibleDC(source);
    HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, m_width, m_height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* const pixels = static_cast<const DWORD*>(bits);
    m_pixels.assign(pixels, pixels + static_cast<size_t>(m_width) * m_height);
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
}

COLORREF Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return CLR_INVALID;
    }
    const DWORD pixel = m_pixels[static_cast<size_t>(y) * m_width + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

int Picture::Count(const RECT& rect, COLORREF colour) const {
    int count = 0;
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            count += At(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}
