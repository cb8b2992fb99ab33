#include "compare/TextPairPane.h"

#include "window/Painting.h"
#include "window/Palette.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr wchar_t kPairClass[] = L"MXOVTextPair";
constexpr int kBeforeId = 1;
constexpr int kAfterId = 2;
constexpr int kTitleHeight = 20; // at 96 dots per inch, as the other
constexpr int kPairGap = 6;

std::size_t LongestLine(const TextColumns& columns) {
    std::size_t longest = 0;
    for (const std::vector<TextLine>* lines : {&columns.before, &columns.after}) {
        for (const TextLine& line : *lines) {
            longest = std::max(longest, line.text.size());
        }
    }
    return longest;
}

} // namespace

bool TextPairPane::Create(HWND parent, int id, const std::wstring& beforeTitle,
                          const std::wstring& afterTitle) {
    m_beforeTitle = beforeTitle;
    m_afterTitle = afterTitle;
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kPairClass;
    return Window::Create(windowClass, WS_EX_CONTROLPARENT, (beforeTitle + L"\n" + afterTitle).c_str(),
                          WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, parent, id);
}

void TextPairPane::Show(TextColumns columns) {
    const std::size_t longest = LongestLine(columns);
    m_before.Show(std::move(columns.before), longest);
    m_after.Show(std::move(columns.after), longest);
    m_differences = std::move(columns.differences);
    ShowDifference(0);
}

void TextPairPane::ShowNext() {
    ShowDifference(m_current + 1);
}

void TextPairPane::ShowPrevious() {
    ShowDifference(m_current + m_differences.size() - 1);
}

LRESULT TextPairPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return CreateTexts() ? 0 : -1;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT: {
        const BufferedPaint paint(Handle());
        Paint(paint.Dc(), paint.Area());
        return 0;
    }
    default:
        return Default(message, wParam, lParam);
    }
}

bool TextPairPane::CreateTexts() {
    m_font = MakeMessageFont(Dpi());
    if (!m_before.Create(Handle(), kBeforeId) || !m_after.Create(Handle(), kAfterId)) {
        return false;
    }
    m_before.OnScrolled([this] { m_after.ScrollTo(m_before.Place()); });
    m_after.OnScrolled([this] { m_before.ScrollTo(m_after.Place()); });
    ShowWindow(m_before.Handle(), SW_SHOWNA);
    ShowWindow(m_after.Handle(), SW_SHOWNA);
    return true;
}

void TextPairPane::OnMetricsChanged() {
    m_font = MakeMessageFont(Dpi());
    m_before.ChangeDpi(Dpi());
    m_after.ChangeDpi(Dpi());
    Arrange();
}

void TextPairPane::Arrange() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    const int width = std::max(0, (static_cast<int>(area.right) - Scale(kPairGap)) / 2);
    const int height = std::max(0, static_cast<int>(area.bottom) - Scale(kTitleHeight));
    MoveWindow(m_before.Handle(), 0, Scale(kTitleHeight), width, height, TRUE);
    MoveWindow(m_after.Handle(), static_cast<int>(area.right) - width, Scale(kTitleHeight), width, height,
               TRUE);
}

void TextPairPane::Paint(HDC dc, const RECT& area) const {
    const Palette palette = CurrentPalette();
    Fill(dc, area, palette.page);
    constexpr UINT kTitle = DT_SINGLELINE | DT_END_ELLIPSIS | DT_VCENTER;
    const LONG middle = (area.right + Scale(kPairGap)) / 2;
    Write(dc, m_font.get(), palette.text, m_beforeTitle,
          {0, 0, middle - Scale(kPairGap), Scale(kTitleHeight)}, kTitle);
    Write(dc, m_font.get(), palette.text, m_afterTitle, {middle, 0, area.right, Scale(kTitleHeight)}, kTitle);
}

void TextPairPane::ShowDifference(std::size_t index) {
    if (m_differences.empty()) {
        return;
    }
    m_current = index % m_differences.size();
    const RowRange& rows = m_differences[m_current];
    m_before.FrameLines(rows.first, rows.end);
    m_after.FrameLines(rows.first, rows.end);
}

} // namespace viewer
