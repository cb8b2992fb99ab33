#include "document/TextView.h"

#include "window/Painting.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

constexpr wchar_t kTextClass[] = L"MXOVTextView";
constexpr int kMostNameCharacters = 30000; // of the text, as the window's own
constexpr int kLinesPerNotch = 3;          // of the wheel

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

void TextView::Show(std::vector<TextLine> lines, std::size_t least) {
    m_lines = std::move(lines);
    m_longest = least;
    m_hasMarks = false;
    m_framed = 0;
    m_frameEnd = 0;
    for (const TextLine& line : m_lines) {
        m_longest = std::max(m_longest, line.text.size());
        m_hasMarks = m_hasMarks || line.mark != LineMark::None;
    }
    SetWindowTextW(Handle(), ReadableText(m_lines).c_str());
    UpdateScrollBars();
    ScrollTo({0, 0});
}

void TextView::ScrollTo(POINT place) {
    SetPosition(SB_HORZ, place.x);
    SetPosition(SB_VERT, place.y);
}

// What fits stands in the middle; of more, the beginning is shown below some lines of what is before it.
void TextView::FrameLines(std::size_t first, std::size_t end) {
    m_framed = first;
    m_frameEnd = end;
    const int page = PageLines();
    const int rest = std::max(page / 4, (page - static_cast<int>(end - first)) / 2);
    SetPosition(SB_VERT, static_cast<int>(first) - rest);
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

void TextView::OnScroll(int bar, int request) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(Handle(), bar, &info);
    const int page = static_cast<int>(info.nPage);
    switch (request) {
    case SB_LINEUP:
        return OnPosition(bar, info.nPos - 1);
    case SB_LINEDOWN:
        return OnPosition(bar, info.nPos + 1);
    case SB_PAGEUP:
        return OnPosition(bar, info.nPos - page);
    case SB_PAGEDOWN:
        return OnPosition(bar, info.nPos + page);
    case SB_TOP:
        return OnPosition(bar, 0);
    case SB_BOTTOM:
        return OnPosition(bar, info.nMax);
    case SB_THUMBTRACK:
        return OnPosition(bar, info.nTrackPos);
    default:
        return;
    }
}

void TextView::OnWheel(int delta, bool sideways) {
    m_wheelRest += delta * kLinesPerNotch;
    const int lines = m_wheelRest / WHEEL_DELTA;
    m_wheelRest -= lines * WHEEL_DELTA;
    const int bar = sideways ? SB_HORZ : SB_VERT;
    OnPosition(bar, Position(bar) - lines);
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

void TextView::OnPosition(int bar, int position) {
    SetPosition(bar, position);
    if (m_scrolled) {
        m_scrolled();
    }
}

// The system keeps the position within the range.
void TextView::SetPosition(int bar, int position) {
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
    info.nPage = static_cast<UINT>(PageLines());
    SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
    info.nMax = static_cast<int>(m_longest);
    info.nPage = static_cast<UINT>(std::max(0L, area.right / m_cell.cx - ColumnOfText()));
    SetScrollInfo(Handle(), SB_HORZ, &info, TRUE);
}

void TextView::OnMetricsChanged() {
    MakeFont();
    UpdateScrollBars();
}

void TextView::MakeFont() {
    const int height = -MulDiv(9, static_cast<int>(Dpi()), 72); // 9 points
    m_font.reset(CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                             OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                             FIXED_PITCH | FF_MODERN, L"Consolas"));
    const TextContext context(Handle(), m_font.get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context.Dc(), &metrics);
    GetTextExtentPoint32W(context.Dc(), L"0", 1, &m_cell);
    m_cell = {std::max(1L, m_cell.cx), std::max(1L, metrics.tmHeight)};
}

int TextView::PageLines() const {
    RECT area = {};
    GetClientRect(Handle(), &area);
    return static_cast<int>(area.bottom / m_cell.cy);
}

} // namespace viewer
