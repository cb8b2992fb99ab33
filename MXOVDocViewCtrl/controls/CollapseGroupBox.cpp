#include "CollapseGroupBox.h"

#include "WindowPlace.h"

using namespace docview;

namespace {

constexpr DWORD kAddedStyle = WS_CLIPSIBLINGS | BS_RIGHT | BS_TYPEMASK;

} // namespace

CollapseGroupBox::CollapseGroupBox()
    : m_borderColour(::GetSysColor(COLOR_BTNSHADOW)), m_headerColour(::GetSysColor(COLOR_INACTIVECAPTION)),
      m_headerNormalColour(m_headerColour), m_headerHotColour(::GetSysColor(COLOR_ACTIVECAPTION)),
      m_backgroundColour(::GetSysColor(COLOR_BTNFACE)), m_titleColour(::GetSysColor(COLOR_CAPTIONTEXT)),
      m_glyphColour(m_titleColour) {}

BEGIN_MESSAGE_MAP(CollapseGroupBox, CButton)
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

void CollapseGroupBox::PreSubclassWindow() {
    m_logFont = LOGFONT{};
    m_logFont.lfHeight = 11;
    m_logFont.lfWeight = FW_NORMAL;
    m_logFont.lfQuality = PROOF_QUALITY;
    m_logFont.lfPitchAndFamily = VARIABLE_PITCH | FF_ROMAN;
    ::lstrcpyn(m_logFont.lfFaceName, L"MS Sans Serif", LF_FACESIZE);
    SetBold(true);
    m_children.RemoveAll();
    RecreateFont();
    ModifyStyle(0, kAddedStyle);
    CButton::PreSubclassWindow();
}

// Past the button class: a box has no keys of its own.
BOOL CollapseGroupBox::PreTranslateMessage(MSG* message) {
    return CWnd::PreTranslateMessage(message);
}

CollapseGroupBox& CollapseGroupBox::SetBorderColor(COLORREF colour) {
    m_borderColour = colour;
    Redraw();
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetTitleColor(COLORREF colour) {
    m_titleColour = colour;
    Redraw();
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetHeaderColor(COLORREF colour) {
    m_headerColour = colour;
    Redraw();
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetTitle(const CString& title) {
    if (::IsWindow(m_hWnd)) {
        m_title = title;
        Redraw();
    }
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetBold(bool bold) {
    m_logFont.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetFontName(const CString& name, BYTE charSet) {
    m_logFont.lfCharSet = charSet;
    ::lstrcpyn(m_logFont.lfFaceName, name.GetString(), LF_FACESIZE);
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetUnderline(bool underline) {
    m_logFont.lfUnderline = underline;
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetItalic(bool italic) {
    m_logFont.lfItalic = italic;
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetFontSize(int points) {
    CFont font;
    font.CreatePointFont(points * 10, m_logFont.lfFaceName);
    LOGFONT logFont{};
    font.GetLogFont(&logFont);
    m_logFont.lfHeight = logFont.lfHeight;
    m_logFont.lfWidth = logFont.lfWidth;
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetLogFont(const LOGFONT& logFont) {
    m_logFont = logFont;
    return RecreateFont();
}

CollapseGroupBox& CollapseGroupBox::SetAlignment(int alignment) {
    if (alignment == kLeft || alignment == kCentred || alignment == kRight) {
        m_alignment = alignment;
    }
    Redraw();
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetCollapsed(bool collapsed) {
    if (!::IsWindow(m_hWnd)) {
        return *this;
    }
    const CRect place = RectInParent(m_hWnd);
    CRect newPlace = m_headerRect;
    m_collapsed = collapsed;
    for (INT_PTR i = 0; i < m_children.GetSize(); ++i) {
        HWND child = m_children.GetAt(i);
        ::EnableWindow(child, !collapsed);
        ::ShowWindow(child, collapsed ? SW_HIDE : SW_SHOWNORMAL);
    }
    if (!collapsed) {
        newPlace.bottom += m_frameRect.Height();
    }
    newPlace.InflateRect(kMargin, kMargin);
    newPlace.OffsetRect(place.TopLeft());
    MoveWindow(&newPlace, TRUE);
    NotifyParent(kToggled);
    Redraw();
    return *this;
}

CollapseGroupBox& CollapseGroupBox::SetBackgroundColor(COLORREF colour) {
    m_backgroundColour = colour;
    return *this;
}

void CollapseGroupBox::OnLButtonDown(UINT flags, CPoint point) {
    CButton::OnLButtonDown(flags, point);
    if ((flags & MK_LBUTTON) != 0 && HitRect().PtInRect(point)) {
        SetCollapsed(!m_collapsed);
        Redraw();
    }
}

void CollapseGroupBox::OnMouseMove(UINT flags, CPoint point) {
    const bool captured = ::GetCapture() == m_hWnd;
    const bool inside = HitRect().PtInRect(point);
    if (!captured && inside) {
        SetHeaderHot(true);
        ::SetCapture(m_hWnd);
    } else if (captured && !inside) {
        SetHeaderHot(false);
        ::ReleaseCapture();
    }
    CButton::OnMouseMove(flags, point);
}

void CollapseGroupBox::CollectChildren() {
    if (m_children.GetSize() != 0) {
        return;
    }
    CRect box;
    GetWindowRect(&box);
    for (HWND child = ::GetWindow(::GetParent(m_hWnd), GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        CRect rect;
        ::GetWindowRect(child, &rect);
        if (child != m_hWnd && (box.PtInRect(rect.BottomRight()) || box.PtInRect(rect.TopLeft()))) {
            m_children.Add(child);
        }
    }
}

CollapseGroupBox& CollapseGroupBox::RecreateFont() {
    m_font.DeleteObject();
    m_font.CreateFontIndirect(&m_logFont);
    Redraw();
    return *this;
}

CRect CollapseGroupBox::HitRect() const {
    CRect rect = m_headerRect;
    rect.InflateRect(kMargin, kMargin);
    return rect;
}

void CollapseGroupBox::SetHeaderHot(bool hot) {
    m_headerColour = hot ? m_headerHotColour : m_headerNormalColour;
    Redraw();
    NotifyParent(hot ? kHeaderEntered : kHeaderLeft);
}

void CollapseGroupBox::NotifyParent(Notification notification) {
    CWnd* const parent = GetParent();
    if (parent != nullptr) {
        parent->SendMessage(WM_COMMAND, notification, reinterpret_cast<LPARAM>(m_hWnd));
    }
}
