#include "Gdi.h"

#include "core/ModuleState.h"
#include "core/Temporary.h"
#include "DeviceContext.h"

#include <cwchar>
#include <utility>

using namespace framework;

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)

CGdiObject::~CGdiObject() {
    DeleteObject();
}

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject) {
    return TemporaryOf<CGdiObject, &CGdiObject::m_hObject>(hObject);
}

BOOL CGdiObject::Attach(HGDIOBJ hObject) noexcept {
    if (!hObject || m_hObject) {
        return FALSE;
    }
    m_hObject = hObject;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() noexcept {
    return std::exchange(m_hObject, nullptr);
}

BOOL CGdiObject::DeleteObject() noexcept {
    return m_hObject && ::DeleteObject(Detach());
}

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor) {
    if (!CreatePen(nPenStyle, nWidth, crColor)) {
        AfxThrowResourceException();
    }
}

CPen* PASCAL CPen::FromHandle(HPEN hPen) {
    return TemporaryOf<CPen, &CPen::m_hObject>(hPen);
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor) noexcept {
    DeleteObject();
    return Attach(::CreatePen(nPenStyle, nWidth, crColor));
}

CBrush::CBrush(COLORREF crColor) {
    if (!CreateSolidBrush(crColor)) {
        AfxThrowResourceException();
    }
}

CBrush* PASCAL CBrush::FromHandle(HBRUSH hBrush) {
    return TemporaryOf<CBrush, &CBrush::m_hObject>(hBrush);
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor) noexcept {
    DeleteObject();
    return Attach(::CreateSolidBrush(crColor));
}

CFont* PASCAL CFont::FromHandle(HFONT hFont) {
    return TemporaryOf<CFont, &CFont::m_hObject>(hFont);
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                       BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision,
                       BYTE nClipPrecision, BYTE nQuality, BYTE nPitchAndFamily,
                       LPCTSTR lpszFacename) noexcept {
    DeleteObject();
    return Attach(::CreateFont(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline,
                               cStrikeOut, nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily,
                               lpszFacename));
}

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont) noexcept {
    DeleteObject();
    return Attach(::CreateFontIndirect(lpLogFont));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC) noexcept {
    constexpr int kTenthsPerInch = 720;
    const HDC screen = pDC ? nullptr : ::GetDC(nullptr);
    LOGFONT font = {};
    font.lfHeight =
        -::MulDiv(::GetDeviceCaps(pDC ? pDC->m_hDC : screen, LOGPIXELSY), nPointSize, kTenthsPerInch);
    font.lfCharSet = DEFAULT_CHARSET;
    std::wcsncpy(font.lfFaceName, lpszFaceName, LF_FACESIZE - 1);
    if (screen) {
        ::ReleaseDC(nullptr, screen);
    }
    return CreateFontIndirect(&font);
}

CBitmap* PASCAL CBitmap::FromHandle(HBITMAP hBitmap) {
    return TemporaryOf<CBitmap, &CBitmap::m_hObject>(hBitmap);
}

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName) noexcept {
    DeleteObject();
    return Attach(::LoadBitmap(AfxGetResourceHandle(), lpszResourceName));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight) noexcept {
    DeleteObject();
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}
