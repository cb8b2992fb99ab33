// The header of the section, and how it is painted.
#include "MXOVGroupBoxEx.h"

#include "mxovshare.h"
#include "SelectedObject.h"

using namespace docview;

namespace {

constexpr int kIconSize = 16;
constexpr WORD kExpandedIcon = 146;
constexpr WORD kCollapsedIcon = 147;
constexpr COLORREF kLineColour = RGB(144, 146, 161);
constexpr COLORREF kDisabledColour = RGB(159, 159, 159);

} // namespace

void MXOVGroupBoxEx::OnPaint() {
    if (!m_collapsible && !m_customPaint) {
        CStatic::OnPaint();
        return;
    }
    CPaintDC dc(this);
    const int saved = dc.SaveDC();
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(RGB(0, 0, 0));
    PaintFrame(dc);
    PaintTitle(dc);
    if (m_collapsible == 1) {
        PaintIcon(dc);
    }
    dc.RestoreDC(saved);
}

CRect MXOVGroupBoxEx::GetHeaderRect() const {
    CRect rect;
    GetClientRect(&rect);
    rect.bottom = rect.top + m_headerHeight;
    return rect;
}

CRect MXOVGroupBoxEx::GetIconRect() const {
    return HeaderSquare(1);
}

CRect MXOVGroupBoxEx::GetSecondIconRect() const {
    return HeaderSquare(2);
}

CRect MXOVGroupBoxEx::HeaderSquare(int placeFromRight) const {
    CRect rect = GetHeaderRect();
    rect.right -= (placeFromRight - 1) * m_headerHeight;
    rect.left = rect.right - m_headerHeight;
    const int margin = (m_headerHeight - kIconSize) / 2;
    if (margin > 0) {
        rect.DeflateRect(margin, margin);
    }
    return rect;
}

void MXOVGroupBoxEx::PaintFrame(CDC& dc) {
    CRect client;
    GetClientRect(&client);
    if (!m_enabled) {
        CBrush grey(kDisabledColour);
        const CRect header = GetHeaderRect();
        dc.FillRect(&header, &grey);
    }
    CPen pen(PS_SOLID, 1, kLineColour);
    const SelectedObject selectedPen(dc, pen);
    dc.MoveTo(client.left, client.top);
    dc.LineTo(client.right, client.top);
}

// The title has a device context of its own: its background is opaque whatever the rest of the painting
// needs.
void MXOVGroupBoxEx::PaintTitle(CDC& dc) {
    CString title;
    GetWindowText(title);
    if (m_useTitleColour) {
        dc.SetTextColor(m_titleColour);
    }
    CClientDC titleDc(this);
    const SelectedObject selectedFont(titleDc, m_titleFont);
    titleDc.SetTextColor(m_titleColour);
    const CRect header = GetHeaderRect();
    titleDc.TextOut(header.left + 5, header.top + 2, title);
}

void MXOVGroupBoxEx::PaintIcon(CDC& dc) {
    const WORD number = m_collapsed ? kCollapsedIcon : kExpandedIcon;
    // Shared: the system reads each of the two icons once for all boxes and frees it itself.
    const auto icon =
        static_cast<HICON>(::LoadImage(mxovshare::OVApplication::hMXOVResInstance, MAKEINTRESOURCE(number),
                                       IMAGE_ICON, kIconSize, kIconSize, LR_DEFAULTCOLOR | LR_SHARED));
    if (icon) {
        const CRect rect = GetIconRect();
        ::DrawIconEx(dc.m_hDC, rect.left, rect.top, icon, kIconSize, kIconSize, 0, nullptr, DI_NORMAL);
    }
}
