// Keys in the popup, from the system's own input queue, under a host's message loop.
#include "popup/DialogKeyboard.h"

#include "PopupFixture.h"
#include "RealMouse.h"

using namespace docview;

namespace {

class DialogKeyboardTest : public PopupFixture {
protected:
    void Key(WORD key) {
        INPUT inputs[2] = {};
        inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
        inputs[0].ki.wVk = inputs[1].ki.wVk = key;
        inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, inputs, sizeof inputs[0]);
    }

    void PressWith(WORD modifier, WORD key) {
        const WORD keys[] = {modifier, key, key, modifier};
        INPUT inputs[4] = {};
        for (int i = 0; i < 4; ++i) {
            inputs[i].type = INPUT_KEYBOARD;
            inputs[i].ki.wVk = keys[i];
            inputs[i].ki.dwFlags = i < 2 ? 0 : KEYEVENTF_KEYUP;
        }
        SendInput(4, inputs, sizeof inputs[0]);
    }

    /// Handles messages as a host does, up to the press of F24; returns the keys that its loop saw pressed
    /// before.
    static std::vector<WPARAM> KeysOfTheHost() {
        std::vector<WPARAM> keys;
        PumpUntil([&keys] {
            MSG message = {};
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (message.message == WM_KEYDOWN && message.wParam == VK_F24) {
                    return true;
                }
                if (message.message == WM_KEYDOWN) {
                    keys.push_back(message.wParam);
                }
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            return false;
        });
        return keys;
    }
};

} // namespace

TEST_F(DialogKeyboardTest, DialogKeysWorkInAnyMessageLoop) {
    Show(DocumentCategory::PartAssembly);
    SetForegroundWindow(Popup());
    SetFocus(Item(IDC_DOCUMENT_PATH));
    Key(VK_TAB);
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == Item(IDC_BROWSE); }));
    Key(VK_TAB);
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() == Item(IDC_DESCRIPTION); }));
    SendMessageW(Item(IDC_DESCRIPTION), EM_SETSEL, 0, 0);
    Key(VK_RETURN);
    EXPECT_TRUE(PumpUntil([&] { return Text(IDC_DESCRIPTION) == L"\r\nThe part"; }));
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"\r\nThe part");
    Key(VK_ESCAPE);
    Key(VK_TAB);
    EXPECT_TRUE(PumpUntil([&] { return GetFocus() != Item(IDC_DESCRIPTION); }));
    EXPECT_TRUE(Popup()) << "Escape";
    EXPECT_TRUE(IsWindowVisible(Popup()));
}

TEST_F(DialogKeyboardTest, ShortcutsOfTheHostReachItsMessageLoop) {
    Show(DocumentCategory::PartAssembly);
    SetForegroundWindow(Popup());
    SetFocus(Item(IDC_DESCRIPTION));
    HandleMessages();
    Key(VK_F1);
    Key(VK_F5);
    PressWith(VK_CONTROL, L'W');
    PressWith(VK_CONTROL, L'O');
    PressWith(VK_CONTROL, L'0');
    PressWith(VK_CONTROL, L'9');
    Key(VK_F24);
    EXPECT_EQ(KeysOfTheHost(), (std::vector<WPARAM>{VK_F1, VK_F5, L'W', L'O', L'0', L'9'}));
    // What edits is the popup's.
    PressWith(VK_CONTROL, L'A');
    PressWith(VK_CONTROL, VK_NUMPAD0);
    Key(L'W');
    Key(VK_F24);
    EXPECT_EQ(KeysOfTheHost(), std::vector<WPARAM>());
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"w");
}

TEST_F(DialogKeyboardTest, AltF4InAnyOfItsControlsClosesItAlone) {
    for (const int id : {IDC_HISTORY, IDC_DOCUMENT_PATH, IDC_DESCRIPTION}) {
        Show(DocumentCategory::PartAssembly);
        SetForegroundWindow(Popup());
        SetFocus(Item(id));
        PressWith(VK_MENU, VK_F4);
        EXPECT_TRUE(PumpUntil([&] { return !Popup(); })) << id;
        HandleMessages();
        EXPECT_TRUE(IsWindow(m_owner.GetSafeHwnd()));
    }
    EXPECT_EQ(m_owner.updates + m_owner.strangeCommands, 0);
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
}
