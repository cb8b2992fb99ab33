#include "TestWindow.h"

#include "afxcmn.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr UINT kOwnMessage = WM_APP + 1;
constexpr UINT kSecondMessage = WM_APP + 2;
constexpr int kPushButton = 101;

using Log = std::vector<std::string>;

class BaseWindow : public RecordingWindow {
public:
    Log log;

protected:
    afx_msg void OnSize(UINT type, int cx, int cy) {
        log.push_back("base size " + std::to_string(type) + " " + std::to_string(cx) + "x" +
                      std::to_string(cy));
        RecordingWindow::OnSize(type, cx, cy);
    }
    afx_msg LRESULT OnOwn(WPARAM wParam, LPARAM lParam) {
        log.push_back("base own");
        return static_cast<LRESULT>(wParam) + lParam;
    }
    afx_msg LRESULT OnSecond(WPARAM, LPARAM) {
        log.push_back("base second");
        return 5;
    }
    afx_msg void OnButton() { log.push_back("base button"); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWindow, RecordingWindow)
    ON_WM_SIZE()
    ON_MESSAGE(kOwnMessage, &BaseWindow::OnOwn)
    ON_MESSAGE(kSecondMessage, &BaseWindow::OnSecond)
    ON_BN_CLICKED(kPushButton, &BaseWindow::OnButton)
END_MESSAGE_MAP()

class DerivedWindow : public BaseWindow {
public:
    bool refuse = false; ///< OnCtlColor returns no brush

protected:
    afx_msg LRESULT OnOwn(WPARAM wParam, LPARAM lParam) {
        log.push_back("derived own");
        return BaseWindow::OnOwn(wParam, lParam) + 100;
    }
    afx_msg void OnMouseMove(UINT flags, CPoint point) {
        log.push_back("move " + std::to_string(flags) + " " + std::to_string(point.x) + "," +
                      std::to_string(point.y));
    }
    afx_msg LRESULT OnNcHitTest(CPoint point) {
        log.push_back("hit " + std::to_string(point.x) + "," + std::to_string(point.y));
        return HTCAPTION;
    }
    afx_msg void OnContextMenu(CWnd* window, CPoint point) {
        log.push_back("menu " + std::to_string(window == this) + " " + std::to_string(point.x) + "," +
                      std::to_string(point.y));
    }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* window, UINT kind) {
        log.push_back("colour " + std::to_string(kind) + " of " + std::to_string(window->GetDlgCtrlID()));
        dc->SetTextColor(RGB(1, 2, 3));
        return refuse ? nullptr : static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    }
    afx_msg BOOL OnEraseBkgnd(CDC* dc) {
        log.push_back("erase " + std::to_string(dc->m_hDC != nullptr));
        return TRUE;
    }
    afx_msg void OnSetFocus(CWnd* old) { log.push_back(old ? "focus from a window" : "focus from nowhere"); }
    afx_msg void OnClicked() { log.push_back("clicked"); }
    afx_msg void OnChange() { log.push_back("change"); }
    afx_msg void OnCommand7() { log.push_back("command 7"); }
    afx_msg void OnNotifyClick(NMHDR* header, LRESULT* result) {
        log.push_back("notify " + std::to_string(header->idFrom));
        *result = 77;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedWindow, BaseWindow)
    ON_MESSAGE(kOwnMessage, &DerivedWindow::OnOwn)
    ON_WM_MOUSEMOVE()
    ON_WM_NCHITTEST()
    ON_WM_CONTEXTMENU()
    ON_WM_CTLCOLOR()
    ON_WM_ERASEBKGND()
    ON_WM_SETFOCUS()
    ON_STN_CLICKED(200, &DerivedWindow::OnClicked)
    ON_EN_CHANGE(201, &DerivedWindow::OnChange)
    ON_COMMAND(7, &DerivedWindow::OnCommand7)
    ON_NOTIFY(NM_CLICK, 300, &DerivedWindow::OnNotifyClick)
END_MESSAGE_MAP()

/// A control that takes one kind of notification back from its parent.
class ReflectingControl : public CWnd {
public:
    int clicks = 0;

protected:
    afx_msg void OnReflectedClick(NMHDR* /*header*/, LRESULT* result) {
        ++clicks;
        *result = 55;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ReflectingControl, CWnd)
    ON_NOTIFY_REFLECT(NM_CLICK, &ReflectingControl::OnReflectedClick)
END_MESSAGE_MAP()

class MessageMap : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.CreateTop());
        window.log.clear();
    }

    DerivedWindow window;
};

TEST_F(MessageMap, TheMostDerivedHandlerComesFirstAndMayCallItsBase) {
    EXPECT_EQ(window.SendMessage(kOwnMessage, 3, 4), 107);
    EXPECT_EQ(window.log, (Log{"derived own", "base own"}));
}

TEST_F(MessageMap, ABasesHandlerServesTheDerivedClass) {
    EXPECT_EQ(window.SendMessage(kSecondMessage), 5);
    window.SendMessage(WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(30, 40));
    EXPECT_EQ(window.log, (Log{"base second", "base size 2 30x40"}));
}

TEST_F(MessageMap, AControlMayTakeItsNotificationsBeforeItsParent) {
    ReflectingControl control;
    ASSERT_TRUE(control.SubclassWindow(AddChild(window, L"STATIC", 300)));
    NMHDR header = {control, 300, static_cast<UINT>(NM_CLICK)};
    const auto notify = [&] { return window.SendMessage(WM_NOTIFY, 300, reinterpret_cast<LPARAM>(&header)); };
    EXPECT_EQ(notify(), 55);
    EXPECT_EQ(control.clicks, 1);
    EXPECT_TRUE(window.log.empty()) << "the parent's entry for it comes second";
    control.Detach();
    EXPECT_EQ(notify(), 77);
    EXPECT_EQ(control.clicks, 1);
    EXPECT_EQ(window.log, Log{"notify 300"});
}

TEST_F(MessageMap, UnhandledMessagesGoToTheProcedureBelow) {
    window.SetWindowText(L"text of the static");
    CString text;
    window.GetWindowText(text);
    EXPECT_EQ(text, L"text of the static");
    EXPECT_TRUE(window.log.empty());
}

TEST_F(MessageMap, MousePositionsAreSigned) {
    window.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-5, 7));
    EXPECT_EQ(window.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(1000, -2)), HTCAPTION);
    window.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.m_hWnd), MAKELPARAM(-1, -1));
    EXPECT_EQ(window.log, (Log{"move 1 -5,7", "hit 1000,-2", "menu 1 -1,-1"}));
}

TEST_F(MessageMap, EveryControlColourMessageReachesOneHandler) {
    const HWND child = AddChild(window, L"BUTTON", 55);
    const HDC dc = ::GetDC(child);
    const auto ask = [&](UINT message) {
        return window.SendMessage(message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(child));
    };
    const auto white = reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(ask(WM_CTLCOLORSTATIC), white);
    EXPECT_EQ(ask(WM_CTLCOLORBTN), white);
    EXPECT_EQ(ask(WM_CTLCOLORMSGBOX), white);
    EXPECT_EQ(window.log, (Log{"colour 6 of 55", "colour 3 of 55", "colour 0 of 55"}));
    EXPECT_EQ(::GetTextColor(dc), RGB(1, 2, 3)) << "what the handler sets stays set";
    window.refuse = true;
    EXPECT_EQ(ask(WM_CTLCOLOREDIT), ::DefWindowProc(window, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                                                    reinterpret_cast<LPARAM>(child)));
    ::ReleaseDC(child, dc);
}

TEST_F(MessageMap, EraseFocusAndShowArriveTakenApart) {
    const HDC dc = ::GetDC(window);
    EXPECT_EQ(window.SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc)), TRUE);
    ::ReleaseDC(window, dc);
    window.SendMessage(WM_SETFOCUS, 0);
    window.SendMessage(WM_SETFOCUS, reinterpret_cast<WPARAM>(::GetDesktopWindow()));
    EXPECT_EQ(window.log, (Log{"erase 1", "focus from nowhere", "focus from a window"}));
}

TEST_F(MessageMap, CommandsAreToldApartByControlAndCode) {
    const HWND button = AddChild(window, L"BUTTON", kPushButton);
    ::SendMessage(button, BM_CLICK, 0, 0);
    ASSERT_FALSE(window.log.empty());
    EXPECT_EQ(window.log.back(), "base button") << "after the focus that a click brings";
    window.log.clear();
    const auto from = reinterpret_cast<LPARAM>(button);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(200, STN_CLICKED), from);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(201, EN_CHANGE), from);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(201, EN_UPDATE), from);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(kPushButton, BN_SETFOCUS), from);
    EXPECT_EQ(window.log, (Log{"clicked", "change"}));
}

TEST_F(MessageMap, MenusAndAcceleratorsAreTheSameCommand) {
    window.SendMessage(WM_COMMAND, MAKEWPARAM(7, 0), 0);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(7, 1), 0);
    window.SendMessage(WM_COMMAND, MAKEWPARAM(7, 0), reinterpret_cast<LPARAM>(window.m_hWnd));
    EXPECT_EQ(window.log, (Log{"command 7", "command 7", "command 7"}));
}

TEST_F(MessageMap, NotificationsCarryAResultBack) {
    NMHDR header = {window, 300, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(window.SendMessage(WM_NOTIFY, 300, reinterpret_cast<LPARAM>(&header)), 77);
    header.code = static_cast<UINT>(NM_DBLCLK);
    EXPECT_EQ(window.SendMessage(WM_NOTIFY, 300, reinterpret_cast<LPARAM>(&header)), 0);
    EXPECT_EQ(window.log, (Log{"notify 300"}));
    EXPECT_EQ(window.SendMessage(WM_NOTIFY, 300, 0), 0) << "a stray one does no harm";
}

TEST_F(MessageMap, CommandRoutingNamesItsTargetWithoutCallingIt) {
    AFX_CMDHANDLERINFO info = {};
    EXPECT_TRUE(window.OnCmdMsg(7, 0, nullptr, &info));
    EXPECT_EQ(info.pTarget, &window);
    EXPECT_NE(info.pmf, nullptr);
    EXPECT_FALSE(window.OnCmdMsg(8, 0, nullptr, &info));
    EXPECT_TRUE(window.log.empty());
}

} // namespace
