// Shows the lines of a text with their numbers, to be scrolled with mouse and keyboard.
#pragma once

#include "common/Handles.h"
#include "document/TextLines.h"
#include "window/Window.h"

#include <functional>

namespace viewer {

struct Palette;

class TextView : public Window {
public:
    /// Creates the view, hidden.
    bool Create(HWND parent, int id);

    /// Shows a text from its beginning. It can be scrolled sideways as if it had a line of `least`
    /// characters.
    void Show(std::vector<TextLine> lines, std::size_t least = 0);

    /// `scrolled` is called after the text was scrolled by anything but ScrollTo.
    void OnScrolled(std::function<void()> scrolled) { m_scrolled = std::move(scrolled); }

    /// The first visible column and line, from 0.
    [[nodiscard]] POINT Place() const { return {Position(SB_HORZ), Position(SB_VERT)}; }
    void ScrollTo(POINT place);

    /// Draws a frame around lines, from 0 to the one before `end`, and scrolls so that they are visible.
    void FrameLines(std::size_t first, std::size_t end);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    void Paint(HDC dc, const RECT& area) const;
    void PaintMargin(HDC dc, int top, const TextLine& line, const Palette& palette) const;
    void PaintFrame(HDC dc, const RECT& area, const Palette& palette) const;
    void PaintLine(HDC dc, const RECT& area, const TextLine& line, const Palette& palette) const;
    void PaintPart(HDC dc, const RECT& area, std::wstring_view text, std::size_t column,
                   COLORREF colour) const;
    void OnScroll(int bar, int request);
    void OnWheel(int delta, bool sideways);
    bool OnKey(WPARAM key);
    void OnPosition(int bar, int position);
    void SetPosition(int bar, int position);
    [[nodiscard]] int PageLines() const;
    void UpdateScrollBars();
    void MakeFont();
    [[nodiscard]] int ColumnOfText() const;
    [[nodiscard]] int Position(int bar) const { return GetScrollPos(Handle(), bar); }

    common::UniqueFont m_font;
    SIZE m_cell = {1, 1}; // of a character, in pixels
    std::vector<TextLine> m_lines;
    bool m_hasMarks = false;   // some line has one
    std::size_t m_longest = 0; // characters in the longest line
    std::size_t m_framed = 0;  // first line in the frame
    std::size_t m_frameEnd = 0;
    std::function<void()> m_scrolled;
    int m_wheelRest = 0;
};

} // namespace viewer
