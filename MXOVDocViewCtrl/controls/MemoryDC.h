// An off-screen surface.
#pragma once

#include "afxwin.h"

namespace docview {

/// A memory device context that owns the bitmap it draws on.
class MemoryDC : public CDC {
public:
    MemoryDC() = default;
    ~MemoryDC() override { Discard(); }
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;

    /// Makes a surface of this size in pixels, compatible with the given device. There must be none yet.
    void Create(CDC* device, SIZE size) {
        CreateCompatibleDC(device);
        m_bitmap.CreateCompatibleBitmap(device, size.cx, size.cy);
        SelectObject(&m_bitmap);
    }

    /// Deletes the surface, if there is one.
    void Discard() {
        if (m_hDC != nullptr) {
            DeleteDC();
            m_bitmap.DeleteObject();
        }
    }

private:
    CBitmap m_bitmap;
};

} // namespace docview
