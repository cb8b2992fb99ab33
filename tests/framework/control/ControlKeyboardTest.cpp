#include "OleTestControl.h"

namespace {

class ControlKeyboardTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_control = CreateControl();
        m_container.Embed(m_control.Get());
        ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
        m_active = m_control.As<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
        Pump();
    }
    void TearDown() override {
        m_active.Reset();
        m_container.Remove();
        m_control.Reset();
        OleTest::TearDown();
    }

    static HWND Item(int id) { return ::GetDlgItem(CTestControl::last->dialog.m_hWnd, id); }
    static void Hold(BYTE key, bool down) {
        BYTE keys[256];
        ::GetKeyboardState(keys);
        keys[key] = down ? 0x80 : 0;
        ::SetKeyboardState(keys);
    }
    HRESULT Key(UINT message, WPARAM key) {
        MSG pressed = {::GetFocus(), message, key, 0, 0, {0, 0}};
        return m_active->TranslateAccelerator(&pressed);
    }
    HRESULT ShiftTab() {
        Hold(VK_SHIFT, true);
        const HRESULT result = Key(WM_KEYDOWN, VK_TAB);
        Hold(VK_SHIFT, false);
        return result;
    }

    MockContainer m_container;
    ComPtr<IUnknown> m_control;
    ComPtr<IOleInPlaceActiveObject> m_active;
};

TEST_F(ControlKeyboardTest, TabGoesThroughTheEnabledControlsAndOut) {
    EXPECT_EQ(Item(kFirstEdit), ::GetFocus());
    EXPECT_EQ(S_OK, Key(WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(Item(kSaveButton), ::GetFocus());
    EXPECT_EQ(S_OK, Key(WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(Item(kLastList), ::GetFocus()) << "the disabled control is passed over";
    m_container.ForgetCalls();
    EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, VK_TAB)) << "out of the control";
    EXPECT_TRUE(m_container.WasCalled("TranslateAccelerator")) << "the container may take it";
    EXPECT_EQ(Item(kLastList), ::GetFocus());
    EXPECT_EQ(S_OK, ShiftTab());
    EXPECT_EQ(Item(kSaveButton), ::GetFocus());
    EXPECT_EQ(S_OK, ShiftTab());
    EXPECT_EQ(Item(kFirstEdit), ::GetFocus());
    EXPECT_EQ(S_FALSE, ShiftTab());
}

TEST_F(ControlKeyboardTest, EnteringByTabStartsAtTheNearEnd) {
    MSG tab = {m_container.Window(), WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    Hold(VK_SHIFT, true);
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE, &tab));
    EXPECT_EQ(Item(kLastList), ::GetFocus());
    Hold(VK_SHIFT, false);
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE, &tab));
    EXPECT_EQ(Item(kFirstEdit), ::GetFocus());
}

TEST_F(ControlKeyboardTest, LetterWithAltPressesTheButton) {
    EXPECT_EQ(S_OK, Key(WM_SYSCHAR, 's'));
    EXPECT_EQ(1, CTestControl::last->dialog.saves);
    EXPECT_EQ(S_FALSE, Key(WM_SYSCHAR, 'x')) << "no control has it";
    ::EnableWindow(Item(kSaveButton), FALSE);
    EXPECT_EQ(S_FALSE, Key(WM_SYSCHAR, 's'));
    EXPECT_EQ(1, CTestControl::last->dialog.saves);
}

TEST_F(ControlKeyboardTest, EnterAndEscapeNeverReachTheDialog) {
    EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, VK_ESCAPE));
    ::SetFocus(Item(kLastList));
    EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, VK_ESCAPE));
    EXPECT_EQ(0, CTestControl::last->dialog.okays + CTestControl::last->dialog.cancels);
    EXPECT_TRUE(::IsWindowVisible(CTestControl::last->dialog.m_hWnd));
}

TEST_F(ControlKeyboardTest, EnterPressesTheFocusedButton) {
    ::SetFocus(Item(kSaveButton));
    EXPECT_EQ(S_OK, Key(WM_KEYDOWN, VK_RETURN));
    EXPECT_EQ(1, CTestControl::last->dialog.saves);
}

TEST_F(ControlKeyboardTest, ArrowsMoveInAList) {
    for (LPCTSTR line : {L"one", L"two", L"three"}) {
        ::SendMessage(Item(kLastList), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
    }
    ::SendMessage(Item(kLastList), LB_SETCURSEL, 0, 0);
    ::SetFocus(Item(kLastList));
    EXPECT_EQ(S_OK, Key(WM_KEYDOWN, VK_DOWN));
    EXPECT_EQ(1, ::SendMessage(Item(kLastList), LB_GETCURSEL, 0, 0));
}

TEST_F(ControlKeyboardTest, OtherKeysAreTheContainers) {
    for (const WPARAM key : {WPARAM{VK_F5}, WPARAM{'O'}, WPARAM{VK_DELETE}}) {
        EXPECT_EQ(S_FALSE, Key(WM_KEYDOWN, key));
    }
    MSG elsewhere = {m_container.Window(), WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    EXPECT_EQ(S_FALSE, m_active->TranslateAccelerator(&elsewhere));
    EXPECT_EQ(E_POINTER, m_active->TranslateAccelerator(nullptr));
}

TEST_F(ControlKeyboardTest, TheContainerLearnsWhichModifiersAreHeld) {
    const std::vector<std::pair<BYTE, DWORD>> modifiers = {
        {0, 0}, {VK_SHIFT, 1}, {VK_CONTROL, 2}, {VK_MENU, 4}};
    for (const auto& [key, flag] : modifiers) {
        Hold(key, true);
        Key(WM_KEYDOWN, VK_F5);
        EXPECT_EQ(flag, m_container.modifiers);
        Hold(key, false);
    }
}

TEST_F(ControlKeyboardTest, DocumentThatComesToTheFrontNamesItsActiveObject) {
    EXPECT_EQ(S_OK, m_active->OnDocWindowActivate(FALSE));
    EXPECT_FALSE(m_container.HasActiveObject());
    EXPECT_EQ(S_OK, m_active->OnDocWindowActivate(TRUE));
    EXPECT_TRUE(m_container.HasActiveObject());
    EXPECT_EQ(S_OK, m_active->OnFrameWindowActivate(TRUE));
    EXPECT_EQ(S_OK, m_active->EnableModeless(FALSE));
    EXPECT_EQ(S_OK, m_active->ResizeBorder(nullptr, nullptr, TRUE));
}

TEST_F(ControlKeyboardTest, ClickActivatesTheUserInterface) {
    m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->UIDeactivate();
    ASSERT_FALSE(m_container.HasActiveObject());
    ::SendMessage(m_container.ControlWindow(), WM_MOUSEACTIVATE,
                  reinterpret_cast<WPARAM>(m_container.Window()), MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN));
    EXPECT_TRUE(m_container.HasActiveObject());
}

} // namespace
