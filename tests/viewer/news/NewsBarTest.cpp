#include "news/NewsBar.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr int kSaveCommand = 71;
constexpr int kOtherCommand = 72;
int g_lastCommand = 0;

LRESULT CALLBACK RecordCommand(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        g_lastCommand = static_cast<int>(wParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class NewsBarTest : public testing::Test {
protected:
    NewsBarTest() {
        WNDCLASSW frameClass = {};
        frameClass.lpfnWndProc = RecordCommand;
        frameClass.lpszClassName = L"NewsBarTestFrame";
        RegisterClassW(&frameClass);
        m_frame = CreateWindowW(L"NewsBarTestFrame", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 200, nullptr,
                                nullptr, nullptr, nullptr);
        m_bar.Create(m_frame, 1);
        g_lastCommand = 0;
    }
    ~NewsBarTest() override { DestroyWindow(m_frame); }

    void Show(const std::wstring& text) {
        m_bar.Show(text, {{kSaveCommand, L"Save"}, {kOtherCommand, L"Compare"}});
        MoveWindow(m_bar.Handle(), 0, 0, 600, m_bar.HeightFor(600), FALSE);
    }
    [[nodiscard]] HWND Button(int command) const { return GetDlgItem(m_bar.Handle(), command); }
    [[nodiscard]] static RECT Inside(HWND window) {
        RECT area = {};
        GetWindowRect(window, &area);
        MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

    HWND m_frame;
    NewsBar m_bar;
};

} // namespace

TEST_F(NewsBarTest, IsHiddenUntilThereIsNews) {
    EXPECT_EQ(m_bar.HeightFor(600), 0);
    EXPECT_FALSE(IsWindowVisible(m_bar.Handle()));
    Show(L"setup.html was changed.");
    EXPECT_GT(m_bar.HeightFor(600), 0);
    EXPECT_TRUE(IsWindowVisible(m_bar.Handle()));
    m_bar.Show({}, {});
    EXPECT_EQ(m_bar.HeightFor(600), 0);
    EXPECT_FALSE(IsWindowVisible(m_bar.Handle()));
    EXPECT_FALSE(Button(kSaveCommand));
}

TEST_F(NewsBarTest, ButtonsStandInTheirOrderAtTheRight) {
    Show(L"setup.html was changed.");
    const RECT save = Inside(Button(kSaveCommand));
    const RECT other = Inside(Button(kOtherCommand));
    EXPECT_LT(save.right, other.left);
    EXPECT_LT(other.right, 600);
    EXPECT_GT(save.left, 300);
    EXPECT_GE(save.top, 0);
    EXPECT_LE(save.bottom, m_bar.HeightFor(600));
}

TEST_F(NewsBarTest, ALongTextInANarrowBarTakesMoreLines) {
    Show(L"A document with a very long name was changed by another program.");
    EXPECT_GT(m_bar.HeightFor(240), m_bar.HeightFor(600));
}

TEST_F(NewsBarTest, AClickSendsTheCommandAndLeavesTheFocus) {
    Show(L"setup.html was changed.");
    SetFocus(m_frame);
    SendMessageW(Button(kOtherCommand), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(GetFocus(), m_frame);
    EXPECT_EQ(g_lastCommand, 0);
    SendMessageW(Button(kOtherCommand), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(g_lastCommand, kOtherCommand);
    EXPECT_EQ(GetFocus(), m_frame);
}

TEST_F(NewsBarTest, ANarrowBarHasItsButtonsBelowTheText) {
    const std::wstring text = L"A document with a very long name was changed by another program.";
    m_bar.Show(text, {{kSaveCommand, L"Save"}, {kOtherCommand, L"Compare"}});
    const int height = m_bar.HeightFor(220);
    MoveWindow(m_bar.Handle(), 0, 0, 220, height, FALSE);
    EXPECT_GE(Inside(Button(kSaveCommand)).left, 0);
    EXPECT_GT(Inside(Button(kSaveCommand)).top, height / 2);
    EXPECT_LE(Inside(Button(kOtherCommand)).bottom, height);
}

TEST_F(NewsBarTest, TheFocusStaysOnTheButtonOfACommandOrReturnsToTheParent) {
    EXPECT_FALSE(m_bar.TakeFocus());
    Show(L"setup.html was changed.");
    SetForegroundWindow(m_frame);
    ASSERT_TRUE(m_bar.TakeFocus());
    EXPECT_EQ(GetFocus(), Button(kSaveCommand));
    EXPECT_TRUE(m_bar.HasFocus());
    m_bar.Show(L"2 documents were changed.", {{kOtherCommand, L"Compare"}, {kSaveCommand, L"Save"}});
    EXPECT_EQ(GetFocus(), Button(kSaveCommand));
    m_bar.Show({}, {});
    EXPECT_EQ(GetFocus(), m_frame);
    EXPECT_FALSE(m_bar.HasFocus());
}

TEST_F(NewsBarTest, KeysPressAndLeaveTheButtons) {
    Show(L"setup.html was changed.");
    SetForegroundWindow(m_frame);
    m_bar.TakeFocus();
    MSG enter = {GetFocus(), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_TRUE(m_bar.PreTranslate(enter));
    EXPECT_EQ(g_lastCommand, kSaveCommand);
    MSG escape = {GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
    EXPECT_TRUE(m_bar.PreTranslate(escape));
    EXPECT_EQ(GetFocus(), m_frame);
    MSG elsewhere = {m_frame, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_FALSE(m_bar.PreTranslate(elsewhere));
}

TEST_F(NewsBarTest, OtherDotsPerInchMakeItHigher) {
    Show(L"setup.html was changed.");
    const int height = m_bar.HeightFor(600);
    m_bar.ChangeDpi(2 * GetDpiForSystem());
    EXPECT_GT(m_bar.HeightFor(1200), height * 3 / 2);
    m_bar.ChangeDpi(GetDpiForSystem());
    EXPECT_EQ(m_bar.HeightFor(600), height);
}

TEST_F(NewsBarTest, ReleasingTheMouseElsewhereSendsNothing) {
    Show(L"setup.html was changed.");
    SendMessageW(Button(kSaveCommand), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    SendMessageW(Button(kSaveCommand), WM_LBUTTONUP, 0, MAKELPARAM(3, 500));
    EXPECT_EQ(g_lastCommand, 0);
    EXPECT_FALSE(GetCapture());
}
