// GDI objects: each owns its handle and deletes it when it dies or takes another one. They are neither copied
// nor moved.
//
// Covered: the documented members below. FromHandle and the functions that return "the previous object"
// always make a temporary object, which does not own the handle and lives until the message or call from
// outside ends, also when an object of the caller's is attached to the same handle. Not covered: palettes,
// regions, pattern brushes, styled pens.
#pragma once

#include "core/Object.h"

class CDC;

class CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)

public:
    CGdiObject() = default;
    ~CGdiObject() override;

    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);

    HGDIOBJ GetSafeHandle() const noexcept { return m_hObject; }
    /// Takes ownership of a handle. FALSE for null, or when the object holds one already.
    BOOL Attach(HGDIOBJ hObject) noexcept;
    /// Gives the handle up to the caller.
    HGDIOBJ Detach() noexcept;
    /// Deletes what is attached. FALSE when there is nothing, or the system refuses.
    BOOL DeleteObject() noexcept;
    /// The object's description; returns the bytes written, 0 on failure.
    int GetObject(int nCount, LPVOID lpObject) const noexcept {
        return ::GetObject(m_hObject, nCount, lpObject);
    }

    HGDIOBJ m_hObject = nullptr;
};

class CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)

public:
    CPen() = default;
    /// Throws a CResourceException when the pen cannot be made.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);

    static CPen* PASCAL FromHandle(HPEN hPen);
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor) noexcept;
    operator HPEN() const noexcept { return static_cast<HPEN>(m_hObject); }
};

class CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)

public:
    CBrush() = default;
    /// Throws a CResourceException when the brush cannot be made.
    explicit CBrush(COLORREF crColor);

    static CBrush* PASCAL FromHandle(HBRUSH hBrush);
    BOOL CreateSolidBrush(COLORREF crColor) noexcept;
    operator HBRUSH() const noexcept { return static_cast<HBRUSH>(m_hObject); }
};

class CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)

public:
    CFont() = default;

    static CFont* PASCAL FromHandle(HFONT hFont);
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename) noexcept;
    BOOL CreateFontIndirect(const LOGFONT* lpLogFont) noexcept;
    /// The size is in tenths of a point, on the given device or the screen.
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = nullptr) noexcept;
    int GetLogFont(LOGFONT* pLogFont) const noexcept { return GetObject(sizeof(LOGFONT), pLogFont); }
    operator HFONT() const noexcept { return static_cast<HFONT>(m_hObject); }
};

class CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)

public:
    CBitmap() = default;

    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap);
    /// From the resource module.
    BOOL LoadBitmap(LPCTSTR lpszResourceName) noexcept;
    BOOL LoadBitmap(UINT nIDResource) noexcept { return LoadBitmap(MAKEINTRESOURCE(nIDResource)); }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight) noexcept;
    int GetBitmap(BITMAP* pBitMap) const noexcept { return GetObject(sizeof(BITMAP), pBitMap); }
    operator HBITMAP() const noexcept { return static_cast<HBITMAP>(m_hObject); }
};
