// What closes the popup, worked with the system's own mouse, and what remains then.
#include "PopupFixture.h"

#include "package/RecordLists.h"
#include "RealMouse.h"

namespace {

class MXOVPopupClosingTest : public PopupFixture {
protected:
    /// Presses and releases a button at a point of a window and awaits both.
    void Click(HWND window, POINT client, DWORD down = MOUSEEVENTF_LEFTDOWN, DWORD up = MOUSEEVENTF_LEFTUP) {
        RealMouse mouse;
        ASSERT_TRUE(mouse.Reach(window, client));
        mouse.Press(down);
        mouse.Release(up);
        // A popup that closed under the mouse leaves the release to whatever lies below it.
        ASSERT_TRUE(PumpUntil([&] { return mouse.Delivered(1); }));
        HandleMessages();
    }

    /// A point of the popup's client area, on the screen.
    POINT OnScreen(POINT client) const {
        ClientToScreen(Popup(), &client);
        return client;
    }

    /// Hands a mouse message of the test's own to the hooks of this thread, in place of a real movement: a
    /// caption is the window manager's, and it keeps what happens there.
    /// `code` and whether there is a record are the system's to choose.
    bool PassToHooks(WPARAM message, POINT screen, int code = HC_ACTION, bool hasRecord = true) {
        substitute = {code, message, screen, hasRecord, false};
        RealMouse mouse; // has hooks of its own
        const HHOOK hook = SetWindowsHookExW(WH_MOUSE, Substitute, nullptr, GetCurrentThreadId());
        mouse.MoveTo(m_owner.Other(), {5, 5});
        const bool passed = PumpUntil([] { return substitute.passed; });
        UnhookWindowsHookEx(hook);
        return passed;
    }

    POINT Middle(HWND window) const {
        RECT client = {};
        GetClientRect(window, &client);
        return {client.right / 2, client.bottom / 2};
    }

private:
    struct Substitution {
        int code;
        WPARAM message;
        POINT screen;
        bool hasRecord;
        bool passed;
    };

    static LRESULT CALLBACK Substitute(int code, WPARAM message, LPARAM info) {
        if (substitute.passed) {
            return CallNextHookEx(nullptr, code, message, info);
        }
        substitute.passed = true;
        MOUSEHOOKSTRUCT record = *reinterpret_cast<const MOUSEHOOKSTRUCT*>(info);
        record.pt = substitute.screen;
        return CallNextHookEx(nullptr, substitute.code, substitute.message,
                              substitute.hasRecord ? reinterpret_cast<LPARAM>(&record) : 0);
    }

    static inline Substitution substitute{};
};

/// A mouse hook that counts presses of the left button.
struct OlderHook {
    static LRESULT CALLBACK Count(int code, WPARAM message, LPARAM info) {
        presses += message == WM_LBUTTONDOWN ? 1 : 0;
        return CallNextHookEx(nullptr, code, message, info);
    }
    static inline int presses = 0;
};

} // namespace

TEST_F(MXOVPopupClosingTest, APressInsideLeavesIt) {
    Show(DocumentCategory::PartAssembly);
    for (const int id : {IDC_DESCRIPTION, IDC_HISTORY}) {
        Click(Item(id), Middle(Item(id)));
        ASSERT_TRUE(Popup());
    }
    Click(Popup(), {3, 3});
    EXPECT_TRUE(Popup());
}

TEST_F(MXOVPopupClosingTest, APressOutsideClosesItAndReachesItsTarget) {
    Show(DocumentCategory::PartAssembly);
    const HWND window = Popup();
    Click(m_owner.Other(), Middle(m_owner.Other()));
    EXPECT_FALSE(Popup());
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(PumpUntil([&] { return m_owner.otherClicks == 1; }));
    EXPECT_EQ(m_owner.updates, 0) << "nothing was edited";
}

TEST_F(MXOVPopupClosingTest, OtherButtonsCloseItToo) {
    const DWORD buttons[][2] = {{MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
                                {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP}};
    for (const auto& button : buttons) {
        Show(DocumentCategory::PartAssembly);
        Click(m_owner.Other(), Middle(m_owner.Other()), button[0], button[1]);
        EXPECT_FALSE(Popup());
    }
}

TEST_F(MXOVPopupClosingTest, MovingOutsideLeavesIt) {
    Show(DocumentCategory::PartAssembly);
    RealMouse mouse;
    ASSERT_TRUE(mouse.Reach(m_owner.Other(), {5, 5}));
    EXPECT_TRUE(Popup());
}

TEST_F(MXOVPopupClosingTest, ItsCaptionClosesIt) {
    Show(DocumentCategory::PartAssembly);
    const HWND window = Popup();
    ASSERT_TRUE(PassToHooks(WM_NCLBUTTONDOWN, OnScreen({20, -8})));
    EXPECT_FALSE(Popup());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(MXOVPopupClosingTest, OnlySevenMessagesCloseIt) {
    const POINT outside = {5, 5};
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP, WM_MOUSEWHEEL,
                               WM_NCMOUSEMOVE, WM_NCRBUTTONDOWN, WM_NCLBUTTONDBLCLK, WM_XBUTTONDOWN}) {
        Show(DocumentCategory::PartAssembly);
        ASSERT_TRUE(PassToHooks(message, outside));
        EXPECT_TRUE(Popup()) << message;
    }
    for (const UINT message : {WM_LBUTTONDOWN, WM_NCLBUTTONDOWN, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN,
                               WM_RBUTTONDBLCLK, WM_MBUTTONDOWN, WM_MBUTTONDBLCLK}) {
        Show(DocumentCategory::PartAssembly);
        ASSERT_TRUE(PassToHooks(message, OnScreen({10, 10})));
        EXPECT_TRUE(Popup()) << message << " inside";
        ASSERT_TRUE(PassToHooks(message, outside));
        EXPECT_FALSE(Popup()) << message;
    }
}

TEST_F(MXOVPopupClosingTest, RightAndBottomEdgesAreOutside) {
    Show(DocumentCategory::PartAssembly);
    RECT client = {};
    GetClientRect(Popup(), &client);
    for (const POINT inside : {POINT{0, 0}, POINT{client.right - 1, 0}, POINT{0, client.bottom - 1}}) {
        ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, OnScreen(inside)));
        EXPECT_TRUE(Popup()) << inside.x << ", " << inside.y;
    }
    for (const POINT outside :
         {POINT{client.right, 0}, POINT{0, client.bottom}, POINT{-1, 0}, POINT{0, -1}}) {
        Show(DocumentCategory::PartAssembly);
        ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, OnScreen(outside)));
        EXPECT_FALSE(Popup()) << outside.x << ", " << outside.y;
    }
}

TEST_F(MXOVPopupClosingTest, TheCallGoesOnToOlderHooks) {
    const HHOOK older = SetWindowsHookExW(WH_MOUSE, OlderHook::Count, nullptr, GetCurrentThreadId());
    OlderHook::presses = 0;
    Show(DocumentCategory::PartAssembly);
    ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, OnScreen({10, 10})));
    EXPECT_EQ(OlderHook::presses, 1) << "inside";
    ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, {5, 5}));
    EXPECT_FALSE(Popup());
    EXPECT_EQ(OlderHook::presses, 2) << "outside";
    ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, {5, 5}));
    EXPECT_EQ(OlderHook::presses, 3) << "without a popup";
    UnhookWindowsHookEx(older);
}

TEST_F(MXOVPopupClosingTest, APressThatStaysInTheQueueClosesItToo) {
    Show(DocumentCategory::PartAssembly);
    ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, {5, 5}, HC_NOREMOVE));
    EXPECT_FALSE(Popup());
}

TEST_F(MXOVPopupClosingTest, ACallWithoutARecordOnlyGoesOn) {
    const HHOOK older = SetWindowsHookExW(WH_MOUSE, OlderHook::Count, nullptr, GetCurrentThreadId());
    Show(DocumentCategory::PartAssembly);
    const int before = OlderHook::presses;
    ASSERT_TRUE(PassToHooks(WM_LBUTTONDOWN, {5, 5}, HC_NOREMOVE, false));
    EXPECT_TRUE(Popup());
    EXPECT_EQ(OlderHook::presses, before + 1);
    UnhookWindowsHookEx(older);
}

TEST_F(MXOVPopupClosingTest, AnEditedOneSaysSoOnceMore) {
    Show(DocumentCategory::PartAssembly);
    Type(L"!");
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 1);
    Click(m_owner.Other(), Middle(m_owner.Other()));
    EXPECT_FALSE(Popup());
    EXPECT_TRUE(PumpUntil([&] { return m_owner.updates == 2; }));
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 2);
}

TEST_F(MXOVPopupClosingTest, TheHooksThatRemainDoNothing) {
    for (int i = 0; i < 3; ++i) {
        Show(DocumentCategory::PartAssembly);
        Click(m_owner.Other(), Middle(m_owner.Other()));
        ASSERT_FALSE(Popup());
    }
    Click(m_owner.Other(), Middle(m_owner.Other()));
    EXPECT_TRUE(PumpUntil([&] { return m_owner.otherClicks == 4; }));
    Show(DocumentCategory::GCode);
    Click(Item(IDC_DESCRIPTION), Middle(Item(IDC_DESCRIPTION)));
    EXPECT_TRUE(Popup());
}

TEST_F(MXOVPopupClosingTest, ItGoesWithItsOwner) {
    Show(DocumentCategory::PartAssembly);
    const HWND window = Popup();
    m_owner.DestroyWindow();
    EXPECT_FALSE(Popup());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(MXOVPopupClosingTest, OnlyItsOwnerClosesIt) {
    Show(DocumentCategory::PartAssembly);
    CWnd stranger;
    MXOVPopupDlg::CloseOf(stranger);
    EXPECT_TRUE(Popup());
    MXOVPopupDlg::CloseOf(m_owner);
    EXPECT_FALSE(Popup());
}

TEST_F(MXOVPopupClosingTest, CloseInItsMenuClosesItAsAPressDoes) {
    Show(DocumentCategory::PartAssembly);
    Type(L"!");
    EXPECT_TRUE(PumpUntil([&] { return m_owner.updates == 1; }));
    PostMessageW(Popup(), WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(PumpUntil([&] { return m_owner.updates == 2; })) << "said once more";
    EXPECT_FALSE(Popup());
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part!");
}

TEST_F(MXOVPopupClosingTest, OtherSystemCommandsLeaveIt) {
    Show(DocumentCategory::PartAssembly);
    PostMessageW(Popup(), WM_SYSCOMMAND, SC_RESTORE, 0);
    PostMessageW(Item(IDC_DESCRIPTION), WM_SYSCOMMAND, SC_CLOSE, 0);
    HandleMessages();
    EXPECT_TRUE(Popup());
}
