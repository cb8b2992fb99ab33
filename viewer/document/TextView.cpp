#include "document/TextView.h"

#include "window/Painting.h"
#include "window/Palette.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

constexpr wchar_t kTextClass[] = L"MXOVTextView";
constexpr int kMostNameCharacters = 30000; // of the text, as the window's own
constexpr int kLinesPerNotch = 3;          // of the wheel

COLORREF ColourOf(Tint tint, const Palette& palette) {
    switch (tint) {
    case Tint::Comment:
        return palette.comment;
    case Tint::Tool:
        return palette.tool;
    default:
        return palette.blockNumber;
    }
}

// What screen readers read.
std::wstring ReadableText(const std::vector<TextLine>& lines) {
    std::wstring name;
    for (const TextLine& line : lines) {
        if (name.size() + line.text.size() > kMostNameCharacters) {
            break;
        }
        name += line.text + L"\r\n";
    }
    return name;
}

} // namespace

bool TextView::Create(HWND parent, int id) {
    WNDCLASSEXW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kTextClass;
    return Window::Create(windowClass, 0, L"",
                          WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL, parent, id);
}

void TextView::Show(std::vector<TextLine> lines) {
    m_lines = std::move(lines);
    m_longest = 0;
    for (const TextLine& line : m_lines) {
        m_longest = std::max(m_longest, line.text.size());
    }
    SetWindowTextW(Handle(), ReadableText(m_lines).c_str());
    UpdateScrollBars();
    ScrollTo(SB_VERT, 0);
    ScrollTo(SB_HORZ, 0);
    InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT TextView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        MakeFont();
        return 0;
    case WM_SIZE:
        UpdateScrollBars();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT: {
        const BufferedPaint paint(Handle());
        Paint(paint.Dc(), paint.Area());
        return 0;
    }
    case WM_VSCROLL:
        OnScroll(SB_VERT, LOWORD(wParam));
        return 0;
    case WM_HSCROLL:
        OnScroll(SB_HORZ, LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0);
        return 0;
    case WM_LBUTTONDOWN:
        SetFocus(Handle());
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(Handle(), nullptr, FALSE);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_KEYDOWN:
        return OnKey(wParam) ? 0 : Default(message, wParam, lParam);
    default:
        return Default(message, wParam, lParam);
    }
}

void TextView::Paint(HDC dc, const RECT& area) const {
    const Palette palette = CurrentPalette();
    Fill(dc, area, palette.card);
    const int left = ColumnOfText() * m_cell.cx;
    Fill(dc, {0, 0, left - m_cell.cx, area.bottom}, palette.page);
    const SavedState saved(dc);
    SelectObject(dc, m_font.get());
    SetBkMode(dc, TRANSPARENT);
    const auto first = static_cast<std::size_t>(Position(SB_VERT));
    for (std::size_t i = first; i < m_lines.size(); ++i) {
        const LONG top = static_cast<LONG>(i - first) * m_cell.cy;
        if (top >= area.bottom) {
            break;
        }
        const std::wstring number = std::to_wstring(i + 1);
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
        ExtTextOutW(dc, left - (static_cast<int>(number.size()) + 2) * m_cell.cx + m_cell.cx / 2, top, 0,
                    nullptr, number.c_str(), static_cast<UINT>(number.size()), nullptr);
        PaintLine(dc, {left, top, area.right, top + m_cell.cy}, m_lines[i], palette);
    }
    if (GetFocus() == Handle()) {
        DrawFocusRect(dc, &area);
    }
}

// The tinted parts and what is between them.
void TextView::PaintLine(HDC dc, const RECT& area, const TextLine& line, const Palette& palette) const {
    const std::wstring_view text = line.text;
    std::size_t done = 0;
    for (const TintedPart& part : line.tints) {
        PaintPart(dc, area, text.substr(done, part.begin - done), done, palette.cardText);
        PaintPart(dc, area, text.substr(part.begin, part.end - part.begin), part.begin,
                  ColourOf(part.tint, palette));
        done = part.end;
    }
    PaintPart(dc, area, text.substr(done), done, palette.cardText);
}

// Only what is visible is drawn, each character in its cell.
void TextView::PaintPart(HDC dc, const RECT& area, std::wstring_view text, std::size_t column,
                         COLORREF colour) const {
    const auto first = static_cast<std::size_t>(Position(SB_HORZ));
    const std::size_t hidden = column < first ? std::min(first - column, text.size()) : 0;
    const LONG cells = (area.right - area.left) / m_cell.cx + 1;
    const auto fitting = static_cast<std::size_t>(cells);
    const std::wstring_view shown = text.substr(hidden, fitting);
    const auto cell = static_cast<LONG>(column + hidden - first);
    if (shown.empty() || cell >= cells) {
        return;
    }
    const std::vector<INT> widths(shown.size(), m_cell.cx);
    SetTextColor(dc, colour);
    ExtTextOutW(dc, area.left + cell * m_cell.cx, area.top, ETO_CLIPPED, &area, shown.data(),
                static_cast<UINT>(shown.size()), widths.data());
}

void TextView::OnScroll(int bar, int request) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(Handle(), bar, &info);
    const int page = static_cast<int>(info.nPage);
    switch (request) {
    case SB_LINEUP:
        return ScrollTo(bar, info.nPos - 1);
    case SB_LINEDOWN:
        return ScrollTo(bar, info.nPos + 1);
    case SB_PAGEUP:
        return ScrollTo(bar, info.nPos - page);
    case SB_PAGEDOWN:
        return ScrollTo(bar, info.nPos + page);
    case SB_TOP:
        return ScrollTo(bar, 0);
    case SB_BOTTOM:
        return ScrollTo(bar, info.nMax);
    case SB_THUMBTRACK:
        return ScrollTo(bar, info.nTrackPos);
    default:
        return;
    }
}

void TextView::OnWheel(int delta, bool sideways) {
    m_wheelRest += delta * kLinesPerNotch;
    const int lines = m_wheelRest / WHEEL_DELTA;
    m_wheelRest -= lines * WHEEL_DELTA;
    const int bar = sideways ? SB_HORZ : SB_VERT;
    ScrollTo(bar, Position(bar) - lines);
}

bool TextView::OnKey(WPARAM key) {
    struct KeyScroll {
        WPARAM key;
        int bar;
        int request;
    };
    constexpr KeyScroll kKeys[] = {
        {VK_UP, SB_VERT, SB_LINEUP},     {VK_DOWN, SB_VERT, SB_LINEDOWN},   {VK_PRIOR, SB_VERT, SB_PAGEUP},
        {VK_NEXT, SB_VERT, SB_PAGEDOWN}, {VK_HOME, SB_VERT, SB_TOP},        {VK_END, SB_VERT, SB_BOTTOM},
        {VK_LEFT, SB_HORZ, SB_LINELEFT}, {VK_RIGHT, SB_HORZ, SB_LINERIGHT},
    };
    const auto* const found = std::ranges::find(kKeys, key, &KeyScroll::key);
    if (found == std::end(kKeys)) {
        return false;
    }
    OnScroll(found->bar, found->request);
    return true;
}

// The system keeps the position within the range.
void TextView::ScrollTo(int bar, int position) {
    SetScrollPos(Handle(), bar, position, TRUE);
    InvalidateRect(Handle(), nullptr, FALSE);
}

void TextView::UpdateScrollBars() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = std::max(0, static_cast<int>(m_lines.size()) - 1);
    info.nPage = static_cast<UINT>(area.bottom / m_cell.cy);
    SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
    info.nMax = static_cast<int>(m_longest);
    info.nPage = static_cast<UINT>(std::max(0L, area.right / m_cell.cx - ColumnOfText()));
    SetScrollInfo(Handle(), SB_HORZ, &info, TRUE);
}

void TextView::MakeFont() {
    const int height = -MulDiv(9, static_cast<int>(GetDpiForWindow(Handle())), 72); // 9 points
    m_font.reset(CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                             OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                             FIXED_PITCH | FF_MODERN, L"Consolas"));
    const TextContext context(Handle(), m_font.get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context.Dc(), &metrics);
    GetTextExtentPoint32W(context.Dc(), L"0", 1, &m_cell);
    m_cell = {std::max(1L, m_cell.cx), std::max(1L, metrics.tmHeight)};
}

// Behind the numbers, in characters from the left edge.
int TextView::ColumnOfText() const {
    constexpr int kLeastDigits = 3;
    return std::max(kLeastDigits, static_cast<int>(std::to_wstring(m_lines.size()).size())) + 2;
}

} // namespace viewer
