// A client that knows the control by its ProgID and by what a container and a script can see, and no more.
#pragma once

#include "ShownRows.h"

#include <windows.h>

#include <oaidl.h>

#include <initializer_list>
#include <string>
#include <vector>

/// Compares and prints rectangles in assertions.
bool operator==(const RECT& a, const RECT& b);
std::ostream& operator<<(std::ostream& out, const RECT& rect);

/// A frame window with the control in the system's ATL container over its whole client area. The thread must
/// have entered an apartment (`ComApartment`).
class ControlClient {
public:
    explicit ControlClient(int width = 500, int height = 620);
    ~ControlClient();
    ControlClient(const ControlClient&) = delete;
    ControlClient& operator=(const ControlClient&) = delete;

    /// The control's automation interface; owned by this object.
    [[nodiscard]] IDispatch* Automation() const { return m_automation; }

    /// Calls a method by name with strings; returns what `Invoke` returned.
    HRESULT Call(const wchar_t* method, std::initializer_list<std::wstring> strings = {});

    /// Calls a method by name with whole numbers.
    HRESULT CallNumbers(const wchar_t* method, std::initializer_list<int> numbers);

    /// Sets and reads a string property.
    HRESULT Put(const wchar_t* property, const std::wstring& value);
    std::wstring Get(const wchar_t* property);

    [[nodiscard]] HWND Frame() const { return m_frame; }
    [[nodiscard]] HWND Container() const { return m_container; }
    /// The control's own window, the container's only child.
    [[nodiscard]] HWND ControlWindow() const;
    /// The dialog inside the control's window.
    [[nodiscard]] HWND Dialog() const;
    /// A control of the dialog.
    [[nodiscard]] HWND Item(int id) const;
    /// Its rectangle in the dialog's client coordinates, pixels.
    [[nodiscard]] RECT ItemRect(int id) const;
    /// The rows of a list view.
    [[nodiscard]] std::vector<ShownRow> Rows(int listId) const { return ShownRows(Item(listId)); }

    /// Changes the frame so that the container's area has this size, in pixels.
    void Resize(int width, int height);

    /// Presses and releases the left button with the pointer at a point of a window's client area.
    void Click(HWND window, int x, int y);
    /// Two clicks that bear one time, however busy the machine is.
    void DoubleClick(HWND window, int x, int y);
    /// Presses and releases the right button.
    void RightClick(HWND window, int x, int y);
    /// Presses at one point and releases at another.
    void Drag(HWND window, POINT from, POINT to);

    /// Handles messages until none is waiting and everything is painted.
    static void Settle();

private:
    HRESULT Invoke(const wchar_t* name, WORD flags, std::vector<VARIANT>& arguments, VARIANT* result);
    void Press(DWORD down, DWORD up, HWND window, POINT from, POINT to);

    HWND m_frame = nullptr;
    HWND m_container = nullptr;
    IDispatch* m_automation = nullptr;
};

/// Enters the single-threaded apartment and prepares the ATL container, for the life of the object.
class ComApartment {
public:
    ComApartment();
    ~ComApartment();
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
};

/// The ProgID under which hosts create the control.
inline constexpr wchar_t kControlProgId[] = L"MXOVTREETAB.MXOVDocViewCtrlVS2015.13";
