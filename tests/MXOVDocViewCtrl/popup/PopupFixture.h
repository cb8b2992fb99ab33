// The popup over an owner window of the tests' own, with documents of a package folder.
#pragma once

#include "popup/MXOVPopupDlg.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// A top-level window with the button that takes the Update command, and one to click on.
class OwnerWindow : public CWnd {
public:
    OwnerWindow();
    ~OwnerWindow() override;

    HWND Update() const { return ::GetDlgItem(m_hWnd, IDC_UPDATE); }
    HWND Other() const { return ::GetDlgItem(m_hWnd, kOther); }

    int updates = 0;     ///< Update commands, as the popup must send them
    int otherClicks = 0; ///< clicks on the other button
    int strangeCommands = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    static constexpr int kOther = 77;
};

class PopupFixture : public testing::Test {
protected:
    PopupFixture();
    ~PopupFixture() override;

    /// Opens the popup for a document, right of the owner, and shows it.
    void Show(DocumentCategory category, int index = 0, bool recent = true);
    /// Fills the popup without placing or showing it.
    void Fill(DocumentCategory category, int index = 0, bool recent = true);

    HWND Popup() const { return MXOVPopupDlg::Current() ? MXOVPopupDlg::Current()->GetSafeHwnd() : nullptr; }
    HWND Item(int id) const { return GetDlgItem(Popup(), id); }
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    std::wstring Text(int id) const;
    /// Types text into the description, at its end.
    void Type(const std::wstring& text) const;
    /// A value of the information file.
    std::wstring Value(const wchar_t* section, const wchar_t* key) const;

    TempFolder m_package;
    OwnerWindow m_owner;
    std::wstring m_preview;
    std::vector<docview::HistoryEntry> m_history;
};

/// Handles the messages that are waiting.
void HandleMessages();
