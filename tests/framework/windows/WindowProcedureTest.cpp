// What becomes of exceptions out of handlers, and of the message that is being handled.
#include "TestWindow.h"

#include "GdiObjectCount.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

constexpr UINT kThrowStandard = WM_APP + 1;
constexpr UINT kThrowDocumented = WM_APP + 2;
constexpr UINT kNested = WM_APP + 3;

class ThrowingWindow : public RecordingWindow {
public:
    int throwAt = -1; ///< message that throws
    int painted = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == static_cast<UINT>(throwAt)) {
            painted += message == WM_PAINT;
            throw std::runtime_error("thrown by a test");
        }
        return RecordingWindow::WindowProc(message, wParam, lParam);
    }
    afx_msg LRESULT OnThrowStandard(WPARAM, LPARAM) { throw std::runtime_error("thrown by a test"); }
    afx_msg LRESULT OnThrowDocumented(WPARAM, LPARAM) { AfxThrowUserException(); }
    afx_msg LRESULT OnNested(WPARAM depth, LPARAM) {
        EXPECT_EQ(GetCurrentMessage()->wParam, depth);
        if (depth > 0) {
            SendMessage(kNested, depth - 1);
        }
        EXPECT_EQ(GetCurrentMessage()->wParam, depth) << "the outer message is current again";
        EXPECT_EQ(GetCurrentMessage()->message, kNested);
        return static_cast<LRESULT>(depth);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ThrowingWindow, RecordingWindow)
    ON_MESSAGE(kThrowStandard, &ThrowingWindow::OnThrowStandard)
    ON_MESSAGE(kThrowDocumented, &ThrowingWindow::OnThrowDocumented)
    ON_MESSAGE(kNested, &ThrowingWindow::OnNested)
END_MESSAGE_MAP()

TEST(WindowProcedure, NoExceptionLeavesIt) {
    ThrowingWindow window;
    ASSERT_TRUE(window.CreateTop());
    EXPECT_EQ(window.SendMessage(kThrowStandard), 0);
    EXPECT_EQ(window.SendMessage(kThrowDocumented), 0);
    EXPECT_EQ(window.SendMessage(kNested, 3), 3) << "and the window lives on";
}

TEST(WindowProcedure, AnExceptionInCreationRefusesTheWindow) {
    for (const UINT message : {WM_NCCREATE, WM_CREATE}) {
        ThrowingWindow window;
        window.throwAt = static_cast<int>(message);
        EXPECT_FALSE(window.CreateTop()) << message;
        EXPECT_EQ(window.m_hWnd, nullptr);
        EXPECT_EQ(window.gone, 1);
    }
}

TEST(WindowProcedure, AnExceptionInPaintingDoesNotPaintForEver) {
    ThrowingWindow window;
    ASSERT_TRUE(window.CreateTop(WS_POPUP | WS_VISIBLE));
    window.throwAt = WM_PAINT;
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ(window.painted, 1);
    EXPECT_FALSE(::GetUpdateRect(window, nullptr, FALSE));
    EXPECT_EQ(window.SendMessage(WM_PAINT), 0);
}

TEST(WindowProcedure, AnExceptionInTheLastMessageStillDetaches) {
    ThrowingWindow window;
    ASSERT_TRUE(window.CreateTop());
    const HWND handle = window.m_hWnd;
    window.throwAt = WM_NCDESTROY;
    ::DestroyWindow(handle);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(WindowProcedure, DefaultUsesTheParametersTheMessageCameWith) {
    class Meddling : public RecordingWindow {
    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_SETTEXT) {
                return Default();
            }
            return RecordingWindow::WindowProc(message, wParam, lParam);
        }
    } window;
    ASSERT_TRUE(window.CreateTop());
    window.SetWindowText(L"by default");
    EXPECT_EQ(window.GetWindowTextLength(), 10);
}

TEST(WindowProcedure, ManyWindowsLeaveNoObjectsBehind) {
    const auto cycle = [] {
        ThrowingWindow window;
        if (!window.CreateTop(WS_POPUP | WS_VISIBLE)) {
            return;
        }
        window.UpdateWindow();
        CClientDC dc(&window);
        CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
        CBrush brush(RGB(0, 255, 0));
        dc.SelectObject(&pen);
        dc.SelectObject(&brush);
        dc.Rectangle(0, 0, 20, 20);
        window.SendMessage(kThrowStandard);
    };
    for (int i = 0; i < 5; ++i) {
        cycle();
    }
    const int before = GdiObjectCount();
    ASSERT_GT(before, 0);
    for (int i = 0; i < 40; ++i) {
        cycle();
    }
    EXPECT_LE(GdiObjectCount(), before + 2);
}

} // namespace
