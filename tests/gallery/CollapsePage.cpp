#include "CollapsePage.h"

#include "resource.h"

#include <algorithm>

namespace {

constexpr std::array kBoxIds{IDC_TITLE_BOX, IDC_COLOURS_BOX, IDC_FEEDS_BOX};
constexpr int kSmallestFont = 6; // points
constexpr int kLargestFont = 12;

int HeightOf(const CWnd& window) {
    CRect rect;
    window.GetWindowRect(&rect);
    return rect.Height();
}

const wchar_t* EventOf(WPARAM notification) {
    switch (notification) {
    case CollapseGroupBox::kHeaderEntered:
        return L"the mouse is over the title bar";
    case CollapseGroupBox::kHeaderLeft:
        return L"the mouse has left the title bar";
    case CollapseGroupBox::kToggled:
        return L"folded or unfolded";
    default:
        return nullptr;
    }
}

} // namespace

void CollapsePage::DoDataExchange(CDataExchange* exchange) {
    GalleryPage::DoDataExchange(exchange);
    for (size_t i = 0; i < m_boxes.size(); ++i) {
        DDX_Control(exchange, kBoxIds[i], m_boxes[i].control);
    }
}

BEGIN_MESSAGE_MAP(CollapsePage, GalleryPage)
    ON_BN_CLICKED(IDC_TITLE_LEFT, &CollapsePage::OnAlignment)
    ON_BN_CLICKED(IDC_TITLE_CENTRED, &CollapsePage::OnAlignment)
    ON_BN_CLICKED(IDC_TITLE_RIGHT, &CollapsePage::OnAlignment)
    ON_BN_CLICKED(IDC_BOLD, &CollapsePage::OnFontStyle)
    ON_BN_CLICKED(IDC_ITALIC, &CollapsePage::OnFontStyle)
    ON_BN_CLICKED(IDC_UNDERLINE, &CollapsePage::OnFontStyle)
    ON_BN_CLICKED(IDC_LARGER, &CollapsePage::OnLarger)
    ON_BN_CLICKED(IDC_SMALLER, &CollapsePage::OnSmaller)
    ON_BN_CLICKED(IDC_COPPER, &CollapsePage::OnCopper)
    ON_BN_CLICKED(IDC_FOREST, &CollapsePage::OnForest)
    ON_BN_CLICKED(IDC_SYSTEM, &CollapsePage::OnSystem)
    ON_BN_CLICKED(IDC_FOLD_ALL, &CollapsePage::OnFoldAll)
    ON_BN_CLICKED(IDC_UNFOLD_ALL, &CollapsePage::OnUnfoldAll)
END_MESSAGE_MAP()

BOOL CollapsePage::OnInitDialog() {
    GalleryPage::OnInitDialog();
    for (Box& box : m_boxes) {
        box.height = HeightOf(box.control);
        box.control.SetFontSize(m_fontSize);
    }
    Check(IDC_TITLE_RIGHT, true);
    Check(IDC_BOLD, true);
    SetDlgItemText(IDC_SPINDLE, L"7200");
    SetDlgItemText(IDC_FEED, L"1450");
    return TRUE;
}

// All boxes send the same values: the window identifies the box.
BOOL CollapsePage::OnCommand(WPARAM wParam, LPARAM lParam) {
    const auto box = std::ranges::find(m_boxes, reinterpret_cast<HWND>(lParam),
                                       [](const Box& candidate) { return candidate.control.m_hWnd; });
    if (box == m_boxes.end() || EventOf(wParam) == nullptr) {
        return GalleryPage::OnCommand(wParam, lParam);
    }
    if (wParam == CollapseGroupBox::kToggled) {
        MoveWhatIsBelow(*box);
    }
    Tell(*box, wParam);
    return TRUE;
}

void CollapsePage::OnAlignment() {
    const int alignment = IsChecked(IDC_TITLE_LEFT)      ? CollapseGroupBox::kLeft
                          : IsChecked(IDC_TITLE_CENTRED) ? CollapseGroupBox::kCentred
                                                         : CollapseGroupBox::kRight;
    for (Box& box : m_boxes) {
        box.control.SetAlignment(alignment);
    }
}

void CollapsePage::OnFontStyle() {
    for (Box& box : m_boxes) {
        box.control.SetBold(IsChecked(IDC_BOLD))
            .SetItalic(IsChecked(IDC_ITALIC))
            .SetUnderline(IsChecked(IDC_UNDERLINE));
    }
}

void CollapsePage::OnLarger() {
    SetFontSize(std::min(m_fontSize + 1, kLargestFont));
}

void CollapsePage::OnSmaller() {
    SetFontSize(std::max(m_fontSize - 1, kSmallestFont));
}

void CollapsePage::OnCopper() {
    SetColours({RGB(120, 60, 20), RGB(184, 115, 51), RGB(255, 248, 240)});
}

void CollapsePage::OnForest() {
    SetColours({RGB(20, 70, 40), RGB(46, 125, 80), RGB(240, 255, 240)});
}

void CollapsePage::OnSystem() {
    SetColours({::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_INACTIVECAPTION),
                ::GetSysColor(COLOR_CAPTIONTEXT)});
}

void CollapsePage::OnFoldAll() {
    SetAllCollapsed(true);
}

void CollapsePage::OnUnfoldAll() {
    SetAllCollapsed(false);
}

void CollapsePage::Tell(Box& box, WPARAM notification) {
    CString title;
    box.control.GetWindowText(title);
    m_tell(title + L": " + EventOf(notification));
}

// Everything that stood below the box follows its lower edge, hidden or not. The windows move without
// painting, since each would leave its picture on the places of the others; then everything is painted once.
void CollapsePage::MoveWhatIsBelow(Box& box) {
    CRect place;
    box.control.GetWindowRect(&place);
    const int shift = place.Height() - box.height;
    const int oldBottom = place.bottom - shift;
    box.height = place.Height();
    for (HWND window = ::GetWindow(m_hWnd, GW_CHILD); window != nullptr;
         window = ::GetWindow(window, GW_HWNDNEXT)) {
        CRect rect;
        ::GetWindowRect(window, &rect);
        if (rect.top >= oldBottom) {
            ScreenToClient(&rect);
            ::MoveWindow(window, rect.left, rect.top + shift, rect.Width(), rect.Height(), FALSE);
        }
    }
    Invalidate();
}

void CollapsePage::SetFontSize(int points) {
    m_fontSize = points;
    for (Box& box : m_boxes) {
        box.control.SetFontSize(points);
    }
}

void CollapsePage::SetColours(const Colours& colours) {
    for (Box& box : m_boxes) {
        box.control.SetBorderColor(colours.border)
            .SetHeaderColor(colours.header)
            .SetTitleColor(colours.title);
    }
}

void CollapsePage::SetAllCollapsed(bool collapsed) {
    for (Box& box : m_boxes) {
        box.control.SetCollapsed(collapsed);
    }
}
