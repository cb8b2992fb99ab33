// How the box is drawn, on its off-screen surface.
#include "CollapseGroupBox.h"

#include "SelectedObject.h"
#include "WindowPlace.h"

#include <array>

using namespace docview;

namespace {

constexpr int kHeaderPadding = 4;
constexpr int kTitleInset = 2;
constexpr int kCornerEllipse = 10;
constexpr int kSquaredFrom = 5; // below the rounded corners of the title bar
constexpr int kFaceStrip = 17;
constexpr UINT kTitleFormat = DT_NOCLIP | DT_SINGLELINE | DT_VCENTER;

using Stroke = std::array<POINT, 3>;
using Glyph = std::array<Stroke, 4>; // points relative to a corner of the glyph rectangle

constexpr Glyph kDownChevrons{{
    {{{0, 0}, {2, 2}, {5, -1}}},
    {{{0, 1}, {2, 3}, {5, 0}}},
    {{{0, 3}, {2, 5}, {5, 2}}},
    {{{0, 4}, {2, 6}, {5, 3}}},
}};
constexpr Glyph kRightChevrons{{
    {{{0, 1}, {2, 3}, {-1, 6}}},
    {{{1, 1}, {3, 3}, {0, 6}}},
    {{{3, 1}, {5, 3}, {2, 6}}},
    {{{4, 1}, {6, 3}, {3, 6}}},
}};
constexpr Glyph kLeftChevrons{{
    {{{0, 1}, {-2, 3}, {1, 6}}},
    {{{-1, 1}, {-3, 3}, {0, 6}}},
    {{{-3, 1}, {-5, 3}, {-2, 6}}},
    {{{-4, 1}, {-6, 3}, {-3, 6}}},
}};

} // namespace

void CollapseGroupBox::OnPaint() {
    CollectChildren();
    CPaintDC dc(this);
    if (!m_renderedOnce) {
        Render();
        m_renderedOnce = true;
    }
    CRect client;
    GetClientRect(&client);
    dc.BitBlt(0, 0, client.Width(), client.Height(), &m_memoryDC, 0, 0, SRCCOPY);
    if (m_whiteBody) {
        const CRect body(client.left + 2, client.top + kFaceStrip, client.right - 2, client.bottom - 2);
        if (!body.IsRectEmpty()) {
            dc.FillSolidRect(&body, RGB(255, 255, 255));
        }
    }
}

void CollapseGroupBox::OnSize(UINT type, int width, int height) {
    CButton::OnSize(type, width, height);
    m_memoryDC.Discard();
    Render();
}

// Painting covers the whole client area.
BOOL CollapseGroupBox::OnEraseBkgnd(CDC* /*dc*/) {
    return FALSE;
}

void CollapseGroupBox::Render() {
    if (!::IsWindow(m_hWnd)) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    if (m_memoryDC.m_hDC == nullptr) {
        CClientDC device(this);
        m_memoryDC.Create(&device, client.Size());
    }
    CRect body = client;
    body.DeflateRect(kMargin, kMargin);
    const SelectedObject selectedFont(m_memoryDC, m_font);
    const CSize extent = PrepareTitle();
    m_headerRect = body;
    m_headerRect.bottom = body.top + extent.cy + kHeaderPadding;
    DrawFace(client);
    DrawHeader();
    DrawGlyph();
    if (!m_collapsed) {
        DrawFrame(body);
    }
    DrawTitle(extent);
}

CSize CollapseGroupBox::PrepareTitle() {
    if (m_title.IsEmpty()) {
        GetWindowText(m_title);
        if (!m_title.IsEmpty()) {
            m_title = L" " + m_title + L" ";
        }
    }
    return m_title.IsEmpty() ? CSize(0, 0) : m_memoryDC.GetTextExtent(m_title);
}

void CollapseGroupBox::DrawFace(const CRect& client) {
    CPen pen(PS_SOLID, 1, m_backgroundColour);
    const SelectedObject selectedPen(m_memoryDC, pen);
    {
        CBrush brush(::GetSysColor(COLOR_BTNFACE));
        const SelectedObject selectedBrush(m_memoryDC, brush);
        m_memoryDC.Rectangle(&client);
    }
    CBrush brush(m_backgroundColour);
    const SelectedObject selectedBrush(m_memoryDC, brush);
    m_memoryDC.Rectangle(client.left, client.top + kFaceStrip, client.right, client.top);
}

void CollapseGroupBox::DrawHeader() {
    CBrush brush(m_headerColour);
    const SelectedObject selectedBrush(m_memoryDC, brush);
    {
        CPen pen(PS_SOLID, 1, m_borderColour);
        const SelectedObject selectedPen(m_memoryDC, pen);
        m_memoryDC.RoundRect(&m_headerRect, CPoint(kCornerEllipse, kCornerEllipse));
    }
    if (!m_collapsed) {
        CPen pen(PS_SOLID, 1, m_headerColour);
        const SelectedObject selectedPen(m_memoryDC, pen);
        m_memoryDC.Rectangle(m_headerRect.left, m_headerRect.top + kSquaredFrom, m_headerRect.right,
                             m_headerRect.bottom);
    }
}

void CollapseGroupBox::DrawGlyph() {
    m_glyphRect.top = m_headerRect.top + 5;
    m_glyphRect.left = m_alignment != kLeft ? m_headerRect.left + 6 : m_headerRect.right - 13;
    m_glyphRect.bottom = m_glyphRect.top + 9;
    m_glyphRect.right = m_glyphRect.left + 4;

    const bool pointsLeft = m_collapsed && m_alignment == kLeft;
    const Glyph& glyph = pointsLeft ? kLeftChevrons : m_collapsed ? kRightChevrons : kDownChevrons;
    const CPoint origin(pointsLeft ? m_glyphRect.right : m_glyphRect.left, m_glyphRect.top);
    CPen pen(PS_SOLID, 1, m_glyphColour);
    const SelectedObject selectedPen(m_memoryDC, pen);
    for (const Stroke& stroke : glyph) {
        m_memoryDC.MoveTo(origin.x + stroke[0].x, origin.y + stroke[0].y);
        m_memoryDC.LineTo(origin.x + stroke[1].x, origin.y + stroke[1].y);
        m_memoryDC.LineTo(origin.x + stroke[2].x, origin.y + stroke[2].y);
    }
}

void CollapseGroupBox::DrawFrame(const CRect& body) {
    m_frameRect = CRect(body.left, m_headerRect.bottom, body.right, body.bottom);
    const int top = m_headerRect.top + kSquaredFrom;
    CPen pen(PS_SOLID, 1, m_borderColour);
    const SelectedObject selectedPen(m_memoryDC, pen);
    m_memoryDC.MoveTo(m_frameRect.left, top);
    m_memoryDC.LineTo(m_frameRect.left, m_frameRect.bottom);
    m_memoryDC.LineTo(m_frameRect.right, m_frameRect.bottom);
    m_memoryDC.LineTo(m_frameRect.right, top);
}

void CollapseGroupBox::DrawTitle(const CSize& extent) {
    CRect rect = m_headerRect;
    if (m_alignment == kLeft) {
        rect.left += kTitleInset;
    } else if (m_alignment == kCentred) {
        rect.left += (m_headerRect.Width() - extent.cx) / 2;
    } else {
        rect.left = m_headerRect.right - kTitleInset - extent.cx;
    }
    rect.top += kTitleInset;
    rect.right = rect.left + extent.cx;
    rect.bottom = rect.top + extent.cy;
    const COLORREF oldColour = m_memoryDC.SetTextColor(m_titleColour);
    const int oldMode = m_memoryDC.SetBkMode(TRANSPARENT);
    m_memoryDC.DrawText(m_title, &rect, kTitleFormat);
    m_memoryDC.SetBkMode(oldMode);
    m_memoryDC.SetTextColor(oldColour);
}

void CollapseGroupBox::Redraw() {
    Render();
    if (!::IsWindow(m_hWnd)) {
        return;
    }
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    CWnd* const parent = GetParent();
    if (parent != nullptr) {
        const CRect place = RectInParent(m_hWnd);
        parent->InvalidateRect(&place, TRUE);
        parent->UpdateWindow();
    }
}
