#include "window/WindowPlacement.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr wchar_t kPlacementKey[] = L"Software\\MXOVDocView\\Test\\Placement";

class WindowPlacementTest : public testing::Test {
protected:
    WindowPlacementTest() { RegDeleteTreeW(HKEY_CURRENT_USER, kPlacementKey); }
    ~WindowPlacementTest() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPlacementKey);
        if (m_window) {
            DestroyWindow(m_window);
        }
    }

    void MakeWindow(const RECT& area) {
        if (m_window) {
            DestroyWindow(m_window);
        }
        m_window =
            CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, area.left, area.top, area.right - area.left,
                          area.bottom - area.top, nullptr, nullptr, nullptr, nullptr);
    }

    [[nodiscard]] RECT Area() const {
        RECT area = {};
        GetWindowRect(m_window, &area);
        return area;
    }

    HWND m_window = nullptr;
};

} // namespace

TEST_F(WindowPlacementTest, NothingKnownChangesNothing) {
    const RECT area = {30, 40, 330, 240};
    MakeWindow(area);
    EXPECT_FALSE(RestorePlacement(m_window, kPlacementKey));
    const RECT restored = Area();
    EXPECT_TRUE(EqualRect(&area, &restored));
}

TEST_F(WindowPlacementTest, ComesBackHiddenWhereItWas) {
    const RECT area = {50, 60, 450, 360};
    MakeWindow(area);
    StorePlacement(m_window, kPlacementKey);
    MakeWindow({0, 0, 200, 200});
    EXPECT_FALSE(RestorePlacement(m_window, kPlacementKey));
    const RECT restored = Area();
    EXPECT_TRUE(EqualRect(&area, &restored));
    EXPECT_FALSE(IsWindowVisible(m_window));
}

TEST_F(WindowPlacementTest, KnowsThatItWasMaximised) {
    MakeWindow({50, 60, 450, 360});
    ShowWindow(m_window, SW_SHOWMAXIMIZED);
    StorePlacement(m_window, kPlacementKey);
    MakeWindow({0, 0, 200, 200});
    EXPECT_TRUE(RestorePlacement(m_window, kPlacementKey));
}

TEST_F(WindowPlacementTest, AValueThatIsNoPlacementIsIgnored) {
    const BYTE bytes[7] = {44};
    RegSetKeyValueW(HKEY_CURRENT_USER, kPlacementKey, L"WindowPlacement", REG_BINARY, bytes, sizeof bytes);
    const RECT area = {30, 40, 330, 240};
    MakeWindow(area);
    EXPECT_FALSE(RestorePlacement(m_window, kPlacementKey));
    const RECT restored = Area();
    EXPECT_TRUE(EqualRect(&area, &restored));
}
