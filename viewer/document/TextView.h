// Shows the lines of a text with their numbers, to be scrolled with mouse and keyboard.
#pragma once

#include "common/Handles.h"
#include "document/TextLines.h"
#include "window/Window.h"

namespace viewer {

struct Palette;

class TextView : public Window {
public:
    /// Creates the view, hidden.
    bool Create(HWND parent, int id);

    /// Shows a text from its beginning.
    void Show(std::vector<TextLine> lines);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint(HDC dc, const RECT& area) const;
    void PaintLine(HDC dc, const RECT& area, const TextLine& line, const Palette& palette) const;
    void PaintPart(HDC dc, const RECT& area, std::wstring_view text, std::size_t column,
                   COLORREF colour) const;
    void OnScroll(int bar, int request);
    void OnWheel(int delta, bool sideways);
    bool OnKey(WPARAM key);
    void ScrollTo(int bar, int position);
    void UpdateScrollBars();
    void MakeFont();
    [[nodiscard]] int ColumnOfText() const;
    [[nodiscard]] int Position(int bar) const { return GetScrollPos(Handle(), bar); }

    common::UniqueFont m_font;
    SIZE m_cell = {1, 1}; // of a character, in pixels
    std::vector<TextLine> m_lines;
    std::size_t m_longest = 0; // characters in the longest line
    int m_wheelRest = 0;
};

} // namespace viewer
