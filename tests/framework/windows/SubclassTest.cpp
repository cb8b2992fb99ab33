// Who gets a window's messages when several parties subclass it, come and go.
#include "TestWindow.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kProbe = WM_APP + 40;

WNDPROC foreignBelow = nullptr;
int foreignCalls = 0;

LRESULT CALLBACK ForeignProcedure(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) {
    foreignCalls += message == kProbe;
    return ::CallWindowProc(foreignBelow, hWnd, message, wParam, lParam);
}

WNDPROC Procedure(HWND hWnd) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtr(hWnd, GWLP_WNDPROC));
}

void PutForeignOnTop(HWND hWnd) {
    foreignCalls = 0;
    foreignBelow = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ForeignProcedure)));
}

class Subclass : public testing::Test {
protected:
    void SetUp() override {
        handle = ::CreateWindowExW(0, L"STATIC", L"text", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr,
                                   nullptr);
        ASSERT_NE(handle, nullptr);
        original = Procedure(handle);
    }
    void TearDown() override { ::DestroyWindow(handle); }

    int TextLength() const { return static_cast<int>(::SendMessage(handle, WM_GETTEXTLENGTH, 0, 0)); }

    HWND handle = nullptr;
    WNDPROC original = nullptr;
};

TEST_F(Subclass, TakesMessagesAndPassesThemOn) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_EQ(window.subclassed, 1);
    EXPECT_NE(Procedure(handle), original);
    EXPECT_EQ(TextLength(), 4);
    EXPECT_EQ(window.Count(WM_GETTEXTLENGTH), 1);
    EXPECT_EQ(*window.GetSuperWndProcAddr(), original);
    window.Detach();
}

TEST_F(Subclass, DetachEndsTheObjectsPart) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_EQ(window.Detach(), handle);
    EXPECT_EQ(window.m_hWnd, nullptr);
    ::SendMessage(handle, kProbe, 0, 0);
    EXPECT_EQ(window.Count(kProbe), 0);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST_F(Subclass, ALaterSubclasserKeepsItsChainWhenTheObjectLeaves) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    PutForeignOnTop(handle);
    window.Detach();
    EXPECT_EQ(Procedure(handle), &ForeignProcedure) << "not ours to remove";
    EXPECT_EQ(TextLength(), 4) << "the message passes our place and reaches the static";
    ::SendMessage(handle, kProbe, 0, 0);
    EXPECT_EQ(foreignCalls, 1);
    EXPECT_EQ(window.Count(kProbe), 0);
}

TEST_F(Subclass, AnObjectThatComesBackIsNotPutIntoTheChainTwice) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    PutForeignOnTop(handle);
    window.Detach();
    RecordingWindow again;
    ASSERT_TRUE(again.SubclassWindow(handle));
    EXPECT_EQ(again.subclassed, 1);
    ::SendMessage(handle, kProbe, 0, 0);
    EXPECT_EQ(again.Count(kProbe), 1);
    EXPECT_EQ(foreignCalls, 1);
    EXPECT_EQ(TextLength(), 4);
    again.Detach();
}

TEST_F(Subclass, DetachLeavesTheMessagesAWayOn) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_EQ(window.Detach(), handle);
    EXPECT_EQ(TextLength(), 4);
    RecordingWindow next;
    ASSERT_TRUE(next.Attach(handle)) << "and attaching takes them up again";
    ::SendMessage(handle, kProbe, 0, 0);
    EXPECT_EQ(next.Count(kProbe), 1);
    EXPECT_EQ(TextLength(), 4);
    next.Detach();
}

TEST_F(Subclass, AttachAloneTakesNoMessages) {
    RecordingWindow window;
    ASSERT_TRUE(window.Attach(handle));
    EXPECT_EQ(Procedure(handle), original);
    ::SendMessage(handle, kProbe, 0, 0);
    EXPECT_TRUE(window.seen.empty());
    EXPECT_EQ(window.Detach(), handle);
}

TEST_F(Subclass, AWindowDestroyedUnderAChainIsForgotten) {
    RecordingWindow window;
    ASSERT_TRUE(window.SubclassWindow(handle));
    PutForeignOnTop(handle);
    window.Detach();
    ::DestroyWindow(handle);
    EXPECT_FALSE(::IsWindow(handle));
}

TEST_F(Subclass, AThrowingPreSubclassWindowLeavesTheWindowAsItWas) {
    class Throwing : public CWnd {
    public:
        void PreSubclassWindow() override { AfxThrowNotSupportedException(); }
    } window;
    EXPECT_THROW(window.SubclassWindow(handle), CNotSupportedException*);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(Procedure(handle), original);
    EXPECT_FALSE(window.CreateEx(0, L"STATIC", L"", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr))
        << "nothing gets out of the hook; the creation fails";
    EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST_F(Subclass, ADialogItemIsFoundByItsNumber) {
    RecordingWindow parent;
    ASSERT_TRUE(parent.CreateTop());
    const HWND child = AddChild(parent, L"BUTTON", 5);
    RecordingWindow window;
    EXPECT_FALSE(window.SubclassDlgItem(6, &parent));
    ASSERT_TRUE(window.SubclassDlgItem(5, &parent));
    EXPECT_EQ(window.m_hWnd, child);
    parent.DestroyWindow();
    EXPECT_EQ(window.gone, 1) << "gone with its parent";
}

} // namespace
