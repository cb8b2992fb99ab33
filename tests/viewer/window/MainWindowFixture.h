// The viewer's main window with the sample open, for tests.
#pragma once

#include "MainWindow.h"

#include "common/Paths.h"
#include "RealMouse.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

namespace viewer {

inline std::vector<HWND> DescendantsOf(HWND window) {
    std::vector<HWND> windows;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM found) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(found)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

/// Settings, versions and sessions are its own.
class MainWindowFixture : public testing::Test {
protected:
    MainWindowFixture() {
        OleInitialize(nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, MainWindow::kSettingsKey);
        const std::wstring sample =
            common::ModuleFolder(GetModuleHandleW(L"mxovshare.dll")) + L"\\bracket.mxov";
        CopyFileW(sample.c_str(), (m_folder / L"bracket.mxov").c_str(), FALSE);
    }
    ~MainWindowFixture() override {
        m_window.Packages().Close();
        DestroyWindow(Frame());
        MSG quit = {};
        PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        m_sessions.WaitForRemovals();
        RegDeleteTreeW(HKEY_CURRENT_USER, MainWindow::kSettingsKey);
        OleUninitialize();
    }

    void SetUp() override {
        ASSERT_EQ(m_window.Create(), L"");
        m_window.Show(SW_SHOWNORMAL);
        m_window.Packages().Open(m_folder / L"bracket.mxov");
        ASSERT_TRUE(PumpUntil([this] { return m_window.Packages().Session() != nullptr; }, 60000));
    }

    [[nodiscard]] HWND Frame() const { return m_window.Handle(); }
    [[nodiscard]] HWND Part(int id) const {
        for (const HWND window : DescendantsOf(Frame())) {
            if (GetDlgCtrlID(window) == id) {
                return window;
            }
        }
        return nullptr;
    }
    [[nodiscard]] RECT PlaceOf(HWND window) const {
        RECT area = {};
        GetWindowRect(window, &area);
        MapWindowPoints(nullptr, Frame(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

    const TempFolder m_folder;
    SessionStore m_sessions{m_folder / L"sessions", {}};
    VersionKeeper m_versions{m_folder / L"versions", VersionSettings(MainWindow::kSettingsKey)};
    MainWindow m_window{m_sessions, m_versions};
};

} // namespace viewer
