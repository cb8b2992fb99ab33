#include "MXOVGroupBoxEx.h"

#include "WindowPlace.h"

#include <initializer_list>

using namespace docview;

namespace {

constexpr int kCatchMargin = 5;    // how far a control may stand out of the box and still be inside
constexpr int kSectionGap = 10;    // closed together with a hidden section
constexpr int kFreeBelowBox = 100; // below a box that fills its parent

template <typename Action>
void ForEach(const CList<HWND, HWND>& windows, Action action) {
    for (POSITION position = windows.GetHeadPosition(); position != nullptr;) {
        action(windows.GetNext(position));
    }
}

void ShowAll(const CList<HWND, HWND>& windows) {
    ForEach(windows, [](HWND window) { ::ShowWindow(window, SW_SHOW); });
}

} // namespace

MXOVGroupBoxEx::MXOVGroupBoxEx() {
    m_titleFont.CreateFont(13, 6, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, 0, 0, 0, 0, FF_ROMAN,
                           L"MS Shell Dlg 2");
}

BEGIN_MESSAGE_MAP(MXOVGroupBoxEx, CStatic)
    ON_WM_PAINT()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDOWN()
    ON_WM_NCHITTEST()
END_MESSAGE_MAP()

void MXOVGroupBoxEx::PreSubclassWindow() {
    CollectWindows();
    CStatic::PreSubclassWindow();
}

void MXOVGroupBoxEx::PostNcDestroy() {
    CStatic::PostNcDestroy();
    for (WindowList* list : {&m_innerWindows, &m_reshowWindows, &m_hiddenBeforeWindows, &m_windowsBelow}) {
        list->RemoveAll();
    }
    m_collapsed = FALSE; // a new window has its full size, is visible, enabled and not pressed
    m_pressed = FALSE;
    m_shown = TRUE;
    m_enabled = TRUE;
}

void MXOVGroupBoxEx::Toggle() {
    ::SetCapture(m_hWnd);
    if (m_collapsed) {
        Expand();
    } else {
        Collapse();
    }
    ::ReleaseCapture();
}

void MXOVGroupBoxEx::Expand() {
    if (m_innerWindows.IsEmpty()) {
        return;
    }
    ShowAll(m_reshowWindows);
    MoveWindowsBelow(m_fullSize.cy - m_collapsedHeight);
    MoveBox(m_fullSize.cy);
    m_collapsed = FALSE;
    GetParent()->Invalidate();
}

void MXOVGroupBoxEx::Collapse() {
    CollectWindows();
    if (m_innerWindows.IsEmpty()) {
        return;
    }
    ForEach(m_innerWindows, [this](HWND window) { HideInnerWindow(window); });
    const int shift = m_fullSize.cy - m_collapsedHeight;
    if (shift > 0) {
        MoveWindowsBelow(-shift);
        MoveBox(m_collapsedHeight);
        m_collapsed = TRUE;
        GetParent()->Invalidate();
    }
}

void MXOVGroupBoxEx::SetExpanded(bool expand) {
    if (expand == (m_collapsed != FALSE)) {
        Toggle();
    }
}

int MXOVGroupBoxEx::SetHeight(int newHeight) {
    CollectWindows();
    if (newHeight < 0) {
        CRect client;
        GetParent()->GetClientRect(&client);
        newHeight = client.bottom - RectInParent(m_hWnd).top - kFreeBelowBox;
    }
    if (newHeight < m_collapsedHeight) {
        return 0;
    }
    MoveBox(newHeight);
    const int shift = newHeight - m_fullSize.cy;
    MoveWindowsBelow(shift);
    m_fullSize.cy = newHeight;
    return shift;
}

void MXOVGroupBoxEx::ShowSection(bool show) {
    if (show == (m_shown != FALSE)) {
        return;
    }
    if (!show) {
        CollectWindows();
    }
    if (m_innerWindows.IsEmpty()) {
        return;
    }
    const int distance = m_fullSize.cy + kSectionGap;
    if (show) {
        ShowAll(m_reshowWindows);
        MoveWindowsBelow(distance);
    } else {
        ForEach(m_innerWindows, [this](HWND window) {
            (::IsWindowVisible(window) ? m_reshowWindows : m_hiddenBeforeWindows).AddTail(window);
            ::ShowWindow(window, SW_HIDE);
        });
        if (distance > 0) {
            MoveWindowsBelow(-distance);
        }
    }
    ShowWindow(show ? SW_SHOW : SW_HIDE);
    m_shown = show;
    GetParent()->Invalidate();
}

void MXOVGroupBoxEx::EnableSection(bool enable) {
    m_enabled = enable;
    EnableWindow(enable);
}

void MXOVGroupBoxEx::OnMouseMove(UINT flags, CPoint point) {
    CStatic::OnMouseMove(flags, point);
}

// The second press of a double click must not count as a press: the box would fold and unfold at once.
void MXOVGroupBoxEx::OnLButtonDblClk(UINT flags, CPoint point) {
    CStatic::OnLButtonDblClk(flags, point);
}

void MXOVGroupBoxEx::OnLButtonUp(UINT /*flags*/, CPoint point) {
    if (m_pressed && GetHeaderRect().PtInRect(point)) {
        Toggle();
    }
    ::ReleaseCapture();
    m_pressed = FALSE;
}

void MXOVGroupBoxEx::OnLButtonDown(UINT /*flags*/, CPoint point) {
    if (GetHeaderRect().PtInRect(point)) {
        m_pressed = TRUE;
    }
}

// A group box lets the mouse through to its parent; the header must not.
LRESULT MXOVGroupBoxEx::OnNcHitTest(CPoint point) {
    const LRESULT hit = CStatic::OnNcHitTest(point);
    CRect header = GetHeaderRect();
    ClientToScreen(&header);
    return m_collapsible && header.PtInRect(point) ? HTCLIENT : hit;
}

void MXOVGroupBoxEx::CollectWindows() {
    const CWnd* const parent = GetParent();
    if (!m_innerWindows.IsEmpty() || parent == nullptr) {
        return;
    }
    const CRect box = RectInParent(m_hWnd);
    m_fullSize = box.Size();
    m_windowsBelow.RemoveAll();
    for (HWND window = ::GetWindow(parent->m_hWnd, GW_CHILD); window != nullptr;
         window = ::GetWindow(window, GW_HWNDNEXT)) {
        if (!IsExcluded(window)) {
            CollectWindow(window, box);
        }
    }
}

void MXOVGroupBoxEx::CollectWindow(HWND window, const CRect& box) {
    CRect catchArea = box;
    catchArea.InflateRect(kCatchMargin, kCatchMargin);
    const CRect rect = RectInParent(window);
    if (catchArea.PtInRect(rect.TopLeft()) && catchArea.PtInRect(rect.BottomRight())) {
        m_innerWindows.AddTail(window);
    } else if (rect.top > box.bottom) {
        m_windowsBelow.AddTail(window);
    }
}

bool MXOVGroupBoxEx::IsExcluded(HWND window) const {
    return window == m_hWnd || (m_excludeById == 1 && ::GetDlgCtrlID(window) == m_excludedId);
}

void MXOVGroupBoxEx::HideInnerWindow(HWND window) {
    POSITION reshow = m_reshowWindows.Find(window);
    if (!::IsWindowVisible(window)) {
        m_hiddenBeforeWindows.AddTail(window);
        if (reshow != nullptr) {
            m_reshowWindows.RemoveAt(reshow);
        }
    } else if (reshow == nullptr) {
        m_reshowWindows.AddTail(window);
    }
    ::ShowWindow(window, SW_HIDE);
}

void MXOVGroupBoxEx::MoveWindowsBelow(int distance) {
    ForEach(m_windowsBelow, [distance](HWND window) {
        const CRect rect = RectInParent(window);
        ::MoveWindow(window, rect.left, rect.top + distance, rect.Width(), rect.Height(), FALSE);
    });
}

void MXOVGroupBoxEx::MoveBox(int height) {
    const CRect box = RectInParent(m_hWnd);
    MoveWindow(box.left, box.top, m_fullSize.cx, height, TRUE);
}
