// The control under a container's message loop, with keys from the system's own input queue.
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <commctrl.h>

#include <filesystem>

namespace {

class KeyboardTest : public EmbeddedControlTest {
protected:
    void SetUp() override {
        ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        active = As<IOleInPlaceActiveObject>(control.Get(), IID_IOleInPlaceActiveObject);
        SetForegroundWindow(container.Window());
        Settle();
    }
    void TearDown() override {
        active.Reset();
        EmbeddedControlTest::TearDown();
    }

    /// The message loop of a container: keys go to the active object first.
    void Settle() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
            keysUp += message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
            if (key && active->TranslateAccelerator(&message) == S_OK) {
                continue;
            }
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    /// Presses the keys in order, releases them in reverse, and handles all that comes of it.
    void Press(const std::vector<WORD>& keys) {
        std::vector<INPUT> inputs;
        const auto add = [&](WORD key, DWORD flags) {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.dwFlags = flags;
            inputs.push_back(input);
        };
        for (const WORD key : keys) {
            add(key, 0);
        }
        for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
            add(*key, KEYEVENTF_KEYUP);
        }
        const size_t expected = keysUp + keys.size();
        ASSERT_EQ(inputs.size(), SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)));
        for (int attempt = 0; keysUp < expected && attempt < kAttempts; ++attempt) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, kInterval, QS_ALLINPUT);
            Settle();
        }
        ASSERT_EQ(expected, keysUp) << "the keys came to another window";
    }

    /// Identifier of the control that has the focus; -1: it is not in the dialog.
    [[nodiscard]] int Focus() const {
        const HWND focus = GetFocus();
        return IsChild(Dialog(), focus) ? GetDlgCtrlID(focus) : -1;
    }

    /// Enters from the container by Tab or Shift+Tab, which is still held, as containers do.
    void EnterByTab(bool backwards, LONG verb = OLEIVERB_UIACTIVATE) {
        SetFocus(container.Window());
        BYTE keys[256] = {};
        GetKeyboardState(keys);
        keys[VK_SHIFT] = backwards ? 0x80 : 0;
        SetKeyboardState(keys);
        MSG tab = {container.Window(), WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
        EXPECT_EQ(S_OK, container.DoVerb(verb, &tab));
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
    }

    /// A round from one end of the dialog to the other and out.
    void ExpectRound(std::vector<int> order, bool backwards) {
        EnterByTab(backwards);
        for (const int id : order) {
            EXPECT_EQ(id, Focus()) << (backwards ? "backwards" : "forwards");
            container.ForgetCalls();
            Press(backwards ? std::vector<WORD>{VK_SHIFT, VK_TAB} : std::vector<WORD>{VK_TAB});
        }
        EXPECT_TRUE(container.WasCalled("TranslateAccelerator")) << "the container is asked at the end";
        EXPECT_EQ(order.back(), Focus()) << "the container moves the focus on, if it likes";
    }

    ComPtr<IOleInPlaceActiveObject> active;
    size_t keysUp = 0;

private:
    static constexpr int kAttempts = 100;
    static constexpr DWORD kInterval = 50; // milliseconds
};

} // namespace

TEST_F(KeyboardTest, TabGoesThroughEveryEnabledControlInTemplateOrderAndOutAtBothEnds) {
    std::vector<int> order = {kPartList, kGCodeList, kSetupList, kAddButton, kAdditionalList};
    ExpectRound(order, false);
    ExpectRound({order.rbegin(), order.rend()}, true);
    EnableWindow(Item(kSaveButton), TRUE);
    EnableWindow(Item(kDeleteButton), TRUE);
    order = {kSaveButton, kPartList, kGCodeList, kSetupList, kAddButton, kDeleteButton, kAdditionalList};
    ExpectRound(order, false);
    ExpectRound({order.rbegin(), order.rend()}, true);
}

TEST_F(KeyboardTest, TabEntersWithThePrimaryVerbToo) {
    EnterByTab(true, OLEIVERB_PRIMARY);
    EXPECT_EQ(kAdditionalList, Focus());
    EnterByTab(false, OLEIVERB_PRIMARY);
    EXPECT_EQ(kPartList, Focus());
}

TEST_F(KeyboardTest, AltSSavesFromEveryControl) {
    const PackageBuilder package;
    const std::wstring file = package.Folder().PathWithSeparator() + L"saved.mxov";
    ASSERT_EQ(S_OK, Load(package.Path(), file));
    for (const int id : {kPartList, kAddButton, kAdditionalList}) {
        SendMessageW(Dialog(), WM_COMMAND, kUpdateButton, 0);
        ASSERT_TRUE(IsWindowEnabled(Item(kSaveButton)));
        SetFocus(Item(id));
        Press({VK_MENU, 'S'});
        EXPECT_FALSE(IsWindowEnabled(Item(kSaveButton))) << id;
        EXPECT_TRUE(std::filesystem::remove(file)) << id;
    }
    Press({VK_MENU, 'S'});
    EXPECT_FALSE(std::filesystem::exists(file)) << "nothing to save";
}

TEST_F(KeyboardTest, ContainerPressesAltSWhileAnotherObjectIsActive) {
    const PackageBuilder package;
    const std::wstring file = package.Folder().PathWithSeparator() + L"saved.mxov";
    ASSERT_EQ(S_OK, Load(package.Path(), file));
    SetFocus(container.Window());
    ASSERT_EQ(S_OK, InPlace()->UIDeactivate());
    const auto part = As<IOleControl>(control.Get(), IID_IOleControl);
    CONTROLINFO info = {};
    info.cb = sizeof info;
    ASSERT_EQ(S_OK, part->GetControlInfo(&info));
    constexpr LPARAM kAltHeld = 0x20000001;
    for (const WPARAM letter : {WPARAM{'s'}, WPARAM{'S'}}) {
        MSG key = {container.Window(), WM_SYSCHAR, letter, kAltHeld, 0, {0, 0}};
        EXPECT_TRUE(IsAccelerator(info.hAccel, info.cAccel, &key, nullptr)) << letter;
        SendMessageW(Dialog(), WM_COMMAND, kUpdateButton, 0);
        EXPECT_EQ(S_OK, part->OnMnemonic(&key));
        EXPECT_FALSE(IsWindowEnabled(Item(kSaveButton)));
        EXPECT_TRUE(std::filesystem::remove(file)) << letter;
        EXPECT_EQ(S_OK, part->OnMnemonic(&key));
        EXPECT_FALSE(std::filesystem::exists(file)) << "nothing to save";
    }
    SendMessageW(Dialog(), WM_COMMAND, kUpdateButton, 0);
    MSG other = {container.Window(), WM_SYSCHAR, L'x', kAltHeld, 0, {0, 0}};
    EXPECT_FALSE(IsAccelerator(info.hAccel, info.cAccel, &other, nullptr));
    EXPECT_EQ(S_OK, part->OnMnemonic(&other));
    EXPECT_FALSE(std::filesystem::exists(file)) << "not its key";
    ASSERT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    MSG key = {container.Window(), WM_SYSCHAR, L's', kAltHeld, 0, {0, 0}};
    EXPECT_EQ(S_OK, part->OnMnemonic(&key));
    EXPECT_FALSE(std::filesystem::exists(file)) << "no button without a window";
}

TEST_F(KeyboardTest, ArrowsMoveInTheLists) {
    const PackageBuilder package;
    ASSERT_EQ(S_OK, Load(package.Path()));
    const HWND list = Item(kAdditionalList);
    const auto focused = [&] {
        return SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    };
    SetFocus(list);
    Press({VK_HOME});
    EXPECT_EQ(0, focused());
    Press({VK_DOWN});
    Press({VK_DOWN});
    EXPECT_EQ(2, focused());
    Press({VK_UP});
    EXPECT_EQ(1, focused());
    EXPECT_EQ(kAdditionalList, Focus());
}

TEST_F(KeyboardTest, EnterAndEscapeNeverCloseOrHideTheDialog) {
    const PackageBuilder package;
    ASSERT_EQ(S_OK, Load(package.Path()));
    const HWND dialog = Dialog();
    for (const int id : {kPartList, kGCodeList, kSetupList, kAdditionalList}) {
        SetFocus(Item(id));
        for (const WORD key : {VK_RETURN, VK_ESCAPE}) {
            Press({key});
            EXPECT_EQ(dialog, Dialog()) << id;
            EXPECT_TRUE(IsWindowVisible(dialog)) << id;
            EXPECT_EQ(id, Focus());
        }
    }
    SetFocus(Item(kAddButton));
    Press({VK_ESCAPE});
    EXPECT_TRUE(IsWindowVisible(dialog));
    // Containers that treat the control as a part of a dialog of their own send its commands.
    for (const WPARAM command : {IDOK, IDCANCEL}) {
        SendMessageW(dialog, WM_COMMAND, command, 0);
    }
    SendMessageW(dialog, WM_CLOSE, 0, 0);
    EXPECT_EQ(dialog, Dialog());
    EXPECT_TRUE(IsWindowVisible(dialog));
}

TEST_F(KeyboardTest, FocusIsGivenAndTakenCleanly) {
    EXPECT_EQ(kPartList, Focus()) << "the first enabled control";
    SetFocus(Item(kSetupList));
    EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    EXPECT_EQ(kSetupList, Focus()) << "the focus inside stays where it is";
    container.ForgetCalls();
    EXPECT_EQ(S_OK, InPlace()->UIDeactivate());
    EXPECT_TRUE(container.WasCalled("OnUIDeactivate"));
    EXPECT_TRUE(container.WasCalled("OnFocus(0)"));
    SetFocus(container.Window());
    EXPECT_EQ(-1, Focus());
    EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(container.WasCalled("OnFocus(1)"));
    EXPECT_NE(-1, Focus());
    const HWND window = container.ControlWindow();
    EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(!GetFocus() || IsWindow(GetFocus()));
    EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    EXPECT_EQ(kPartList, Focus());
}
