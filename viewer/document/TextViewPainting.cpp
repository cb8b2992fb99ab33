#include "document/TextView.h"

#include "window/Painting.h"
#include "window/Palette.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr int kSignCells = 2; // behind the number of a line, when some have marks

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

COLORREF BackgroundOf(LineMark mark, const Palette& palette) {
    switch (mark) {
    case LineMark::Removed:
        return palette.removed;
    case LineMark::Added:
        return palette.added;
    case LineMark::Changed:
        return palette.changed;
    case LineMark::Gap:
        return palette.page;
    default:
        return palette.card;
    }
}

wchar_t SignOf(LineMark mark) {
    switch (mark) {
    case LineMark::Removed:
        return L'-';
    case LineMark::Added:
        return L'+';
    case LineMark::Changed:
        return L'*';
    default:
        return L' ';
    }
}

} // namespace

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
        const RECT row = {left, top, area.right, top + m_cell.cy};
        Fill(dc, {left - m_cell.cx, row.top, row.right, row.bottom}, BackgroundOf(m_lines[i].mark, palette));
        PaintMargin(dc, top, m_lines[i], palette);
        PaintLine(dc, row, m_lines[i], palette);
    }
    PaintFrame(dc, area, palette);
    if (GetFocus() == Handle()) {
        DrawFocusRect(dc, &area);
    }
}

// The number, and behind it the sign of the mark for those who do not see its colour.
void TextView::PaintMargin(HDC dc, int top, const TextLine& line, const Palette& palette) const {
    const int end = (ColumnOfText() - (m_hasMarks ? kSignCells : 0)) * m_cell.cx - m_cell.cx * 3 / 2;
    if (line.number > 0) {
        const std::wstring number = std::to_wstring(line.number);
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
        ExtTextOutW(dc, end - static_cast<int>(number.size()) * m_cell.cx, top, 0, nullptr, number.c_str(),
                    static_cast<UINT>(number.size()), nullptr);
    }
    if (const wchar_t sign = SignOf(line.mark); sign != L' ') {
        SetTextColor(dc, palette.text);
        ExtTextOutW(dc, end + m_cell.cx / 2, top, 0, nullptr, &sign, 1, nullptr);
    }
}

void TextView::PaintFrame(HDC dc, const RECT& area, const Palette& palette) const {
    if (m_frameEnd > m_framed) {
        const LONG first = Position(SB_VERT);
        const RECT frame = {(ColumnOfText() - 1) * m_cell.cx,
                            (static_cast<LONG>(m_framed) - first) * m_cell.cy, area.right,
                            (static_cast<LONG>(m_frameEnd) - first) * m_cell.cy};
        SetDCBrushColor(dc, palette.frame);
        FrameRect(dc, &frame, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
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

// Behind the numbers, in characters from the left edge.
int TextView::ColumnOfText() const {
    constexpr int kLeastDigits = 3;
    return std::max(kLeastDigits, static_cast<int>(std::to_wstring(m_lines.size()).size())) + 2 +
           (m_hasMarks ? kSignCells : 0);
}

} // namespace viewer
