// The dialog in a window of its own, with a package folder to load.
#pragma once

#include "dialog/MXOVDocViewActiveXDlg.h"
#include "ShownRows.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

inline constexpr int kLists[] = {IDC_PART_LIST, IDC_GCODE_LIST, IDC_SETUP_LIST, IDC_ADDITIONAL_LIST};

/// A frame that notes what the dialog leaves to it.
class FrameWindow : public CWnd {
public:
    FrameWindow();
    ~FrameWindow() override { DestroyWindow(); }

    int contextMenus = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

class DialogFixture : public testing::Test {
protected:
    /// Creates the dialog's window inside the frame.
    void Create();

    /// Hands the package folder to the dialog as a host does, and loads it.
    void Load();

    /// Writes the information file.
    void Describe(const std::string& information) { m_package.Write(L"mxinfo.ini", information); }

    HWND Item(int id) const { return GetDlgItem(m_dialog.GetSafeHwnd(), id); }
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    /// Whether the control itself is shown, wherever its frame is.
    bool IsShown(int id) const { return (GetWindowLongPtrW(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }

    std::vector<ShownRow> Rows(int list) const { return ShownRows(Item(list)); }
    void Select(int list, int item) const;
    /// Sends a notification as the list view itself does; returns the answer.
    LRESULT Notify(int list, UINT code) const;
    /// Presses and releases the left button in the header of a section box.
    void ClickHeader(int box) const;
    /// Sends the command of a button.
    void Command(int id) const;

    TempFolder m_package;
    FrameWindow m_frame;
    MXOVDocViewActiveXDlg m_dialog;
};

/// Answers the next message box and keeps its text.
class MessageBoxAnswer {
public:
    explicit MessageBoxAnswer(int button);
    ~MessageBoxAnswer();
    MessageBoxAnswer(const MessageBoxAnswer&) = delete;
    MessageBoxAnswer& operator=(const MessageBoxAnswer&) = delete;

    int count = 0; ///< how many were shown
    std::wstring title;
    std::wstring text;
    HWND owner = nullptr;

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    void Read(HWND box);

    int m_button;
    HHOOK m_hook;
    HWND m_answered = nullptr; ///< the box that has its answer and is still there
};
