// A bar across the window for news, with buttons. It never takes the focus by itself, nor at a click.
#pragma once

#include "common/Handles.h"
#include "window/Window.h"

#include <string>
#include <vector>

namespace viewer {

class NewsBar : public Window {
public:
    struct Button {
        int command; ///< sent to the parent when the button is clicked
        std::wstring text;
    };

    /// Creates the bar, hidden.
    bool Create(HWND parent, int id);

    /// Shows a text with buttons; an empty text hides the bar. The parent then lays itself out.
    void Show(const std::wstring& text, const std::vector<Button>& buttons);

    /// Sets the focus to the first button; false when the bar shows none.
    bool TakeFocus() const;
    [[nodiscard]] bool HasFocus() const { return IsChild(Handle(), GetFocus()); }

    /// Handles the keys that move the focus inside, and Escape, which leaves the bar; true when it has
    /// handled this one.
    [[nodiscard]] bool PreTranslate(MSG& message) const;

    /// The height that the bar needs at a width, in pixels; 0 while it shows nothing.
    [[nodiscard]] int HeightFor(int width) const;

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnMetricsChanged() override;

private:
    void OnPaint();
    void PlaceButtons();
    void AddButton(const Button& button);
    void RemoveButtons();
    void ReturnFocus(int command) const;
    [[nodiscard]] SIZE ButtonSize(HWND button) const;
    [[nodiscard]] int ButtonsWidth() const;
    [[nodiscard]] int TextHeight(int width) const;
    [[nodiscard]] int TextWidth(int width) const;
    [[nodiscard]] bool IsNarrow(int width) const;

    common::UniqueFont m_font;
    std::wstring m_text;
    std::vector<HWND> m_buttons; // children, destroyed with the window
};

} // namespace viewer
