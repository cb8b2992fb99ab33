// CImageList: images of one size; owns its handle.
//
// Covered: the documented members below. FromHandle makes temporary objects that do not own the list. Not
// covered: dragging, overlays, serialisation, creation from a strip resource. A list view deletes the image
// lists it shows when it is destroyed, unless its style has LVS_SHAREIMAGELISTS: lists owned by a CImageList
// need that style.
#pragma once

#include "Gdi.h"

#include <commctrl.h>

class CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)

public:
    CImageList() = default;
    ~CImageList() override;

    static CImageList* PASCAL FromHandle(HIMAGELIST hImageList);

    HIMAGELIST GetSafeHandle() const noexcept { return m_hImageList; }
    operator HIMAGELIST() const noexcept { return m_hImageList; }
    /// Takes ownership. FALSE for null, or when the object holds a list already.
    BOOL Attach(HIMAGELIST hImageList) noexcept;
    HIMAGELIST Detach() noexcept;
    BOOL DeleteImageList() noexcept;

    /// Image size in pixels, ILC_ flags, images at first and by which the list grows.
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow) noexcept;
    /// Adds one image or a strip of them; the place of the first, -1 on failure. The bitmap stays the
    /// caller's.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask) noexcept;
    int Add(CBitmap* pbmImage, COLORREF crMask) noexcept;
    int Add(HICON hIcon) noexcept { return ::ImageList_AddIcon(m_hImageList, hIcon); }
    int GetImageCount() const noexcept { return ::ImageList_GetImageCount(m_hImageList); }
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle) noexcept;

    HIMAGELIST m_hImageList = nullptr;
};
