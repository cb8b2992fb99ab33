// Basic types of the framework: calling-convention words, POSITION, CPoint, CSize and CRect.
//
// Covered of the documented value classes: construction, comparison, arithmetic with points and sizes, and of
// CRect the measures, the tests and the in-place changes below. Not covered: union, intersection, subtraction
// and scaling.
#pragma once

#include <windows.h>

#define AFXAPI __stdcall
#define afx_msg // marks a member that a message map calls

namespace framework {

struct Position;

} // namespace framework

/// Opaque place inside a collection; null at the end.
using POSITION = framework::Position*;

/// A width and a height.
class CSize : public SIZE {
public:
    CSize() noexcept : SIZE{0, 0} {}
    CSize(int initCX, int initCY) noexcept : SIZE{initCX, initCY} {}
    CSize(SIZE initSize) noexcept : SIZE(initSize) {}

    BOOL operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    BOOL operator!=(SIZE size) const noexcept { return !(*this == size); }
};

/// A place in pixels.
class CPoint : public POINT {
public:
    CPoint() noexcept : POINT{0, 0} {}
    CPoint(int initX, int initY) noexcept : POINT{initX, initY} {}
    CPoint(POINT initPt) noexcept : POINT(initPt) {}

    /// From a message's parameter: low word x, high word y, both signed.
    CPoint(LPARAM dwPoint) noexcept
        : POINT{static_cast<short>(LOWORD(dwPoint)), static_cast<short>(HIWORD(dwPoint))} {}

    BOOL operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    BOOL operator!=(POINT point) const noexcept { return !(*this == point); }
    CPoint operator+(SIZE size) const noexcept { return CPoint(x + size.cx, y + size.cy); }
    CPoint operator-(SIZE size) const noexcept { return CPoint(x - size.cx, y - size.cy); }
    CSize operator-(POINT point) const noexcept { return CSize(x - point.x, y - point.y); }
};

/// A rectangle: left and top inclusive, right and bottom exclusive.
class CRect : public RECT {
public:
    CRect() noexcept : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
    CRect(const RECT& srcRect) noexcept : RECT(srcRect) {}
    CRect(LPCRECT lpSrcRect) noexcept : RECT(*lpSrcRect) {}
    CRect(POINT point, SIZE size) noexcept : RECT{point.x, point.y, point.x + size.cx, point.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) noexcept
        : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return CSize(Width(), Height()); }
    CPoint TopLeft() const noexcept { return CPoint(left, top); }
    CPoint BottomRight() const noexcept { return CPoint(right, bottom); }

    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }

    void InflateRect(int x, int y) noexcept { ::InflateRect(this, x, y); }
    void DeflateRect(int x, int y) noexcept { ::InflateRect(this, -x, -y); }
    void OffsetRect(int x, int y) noexcept { ::OffsetRect(this, x, y); }
    void OffsetRect(POINT point) noexcept { ::OffsetRect(this, point.x, point.y); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }
    BOOL operator==(const RECT& rect) const noexcept { return ::EqualRect(this, &rect); }
    BOOL operator!=(const RECT& rect) const noexcept { return !::EqualRect(this, &rect); }
};
