// The commands for a document as a row of buttons.
#pragma once

#include <vector>

#include <windows.h>

namespace viewer {

struct DocumentDetails;

class DocumentButtons {
public:
    /// Creates the buttons, hidden, as children of `parent`, which gets their commands.
    void Create(HWND parent);

    /// Sets their font, which outlives its use, and the dots per inch that they are laid out for.
    void SetFont(HFONT font, UINT dpi);

    /// Shows those that make sense for a document; null for none.
    void Show(const DocumentDetails* document);

    /// Places the shown ones from `left` to `right`, in as many rows as they need. Returns where the next row
    /// would begin.
    [[nodiscard]] int Place(int left, int top, int right);

private:
    [[nodiscard]] SIZE SizeOf(HWND button) const;

    HFONT m_font = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
    std::vector<HWND> m_buttons; // destroyed with the parent
};

} // namespace viewer
