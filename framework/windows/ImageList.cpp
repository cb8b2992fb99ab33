#include "ImageList.h"

#include "core/Temporary.h"
#include "DeviceContext.h"

#include <utility>

using namespace framework;

IMPLEMENT_DYNAMIC(CImageList, CObject)

CImageList::~CImageList() {
    DeleteImageList();
}

CImageList* PASCAL CImageList::FromHandle(HIMAGELIST hImageList) {
    return TemporaryOf<CImageList, &CImageList::m_hImageList>(hImageList);
}

BOOL CImageList::Attach(HIMAGELIST hImageList) noexcept {
    if (!hImageList || m_hImageList) {
        return FALSE;
    }
    m_hImageList = hImageList;
    return TRUE;
}

HIMAGELIST CImageList::Detach() noexcept {
    return std::exchange(m_hImageList, nullptr);
}

BOOL CImageList::DeleteImageList() noexcept {
    return m_hImageList && ::ImageList_Destroy(Detach());
}

BOOL CImageList::Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow) noexcept {
    DeleteImageList();
    const ActivationScope activation; // the same library as the list views'
    return Attach(::ImageList_Create(cx, cy, nFlags, nInitial, nGrow));
}

int CImageList::Add(CBitmap* pbmImage, CBitmap* pbmMask) noexcept {
    return ::ImageList_Add(m_hImageList, *pbmImage, pbmMask ? static_cast<HBITMAP>(*pbmMask) : nullptr);
}

int CImageList::Add(CBitmap* pbmImage, COLORREF crMask) noexcept {
    return ::ImageList_AddMasked(m_hImageList, *pbmImage, crMask);
}

BOOL CImageList::Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle) noexcept {
    return ::ImageList_Draw(m_hImageList, nImage, pDC->m_hDC, pt.x, pt.y, nStyle);
}
