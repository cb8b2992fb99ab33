// A real parent window for group boxes, and the eyes and hands of their tests.
#pragma once

#include <windows.h>

#include <functional>
#include <iosfwd>
#include <vector>

/// A command message as the parent received it.
struct Command {
    WPARAM wParam;
    HWND window;
    bool operator==(const Command&) const = default;
};

/// A visible top-level window whose client area lies at a fixed place of the screen. It records the command
/// messages it gets and destroys its children with itself.
class BoxParent {
public:
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 500;
    static constexpr COLORREF kFace = RGB(250, 240, 230);

    BoxParent();
    ~BoxParent();
    BoxParent(const BoxParent&) = delete;
    BoxParent& operator=(const BoxParent&) = delete;

    HWND Window() const { return m_window; }

    /// A group box as a dialog template declares one.
    HWND AddGroupBox(const RECT& place, const wchar_t* title, int identifier = 1000) const;

    /// A control of a plain kind; visible by default.
    HWND AddControl(const RECT& place, int identifier = 2000, DWORD style = WS_VISIBLE) const;

    /// Lets every window repaint what is invalid.
    void Paint() const;

    const std::vector<Command>& Commands() const { return m_commands; }
    void ForgetCommands() { m_commands.clear(); }

    /// How often the background was erased.
    int Erasures() const { return m_erasures; }

    /// What is run when a command arrives, while its sender waits.
    std::function<void(const Command&)> onCommand;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
    std::vector<Command> m_commands;
    int m_erasures = 0;
};

/// The window's rectangle in its parent's client coordinates.
RECT PlaceOf(HWND window);

bool operator==(const RECT& left, const RECT& right);
std::ostream& operator<<(std::ostream& stream, const RECT& rect);

/// Whether the window itself is shown, whatever its parents are.
bool IsShown(HWND window);

/// Sends a mouse message with a point in client coordinates.
LRESULT SendMouse(HWND window, UINT message, POINT point, WPARAM keys = 0);

/// Presses and releases the left button at a point in client coordinates.
void Click(HWND window, POINT point);

/// The part of the update region's bounding box that the window has to repaint; empty when nothing is
/// invalid.
RECT InvalidPart(HWND window);

/// Handles every message that is waiting.
void PumpMessages();
