// The frame of the control's property page: the system's or the container's, and the control closed under it.
#include "ModalControl.h"

namespace {

using PropertyFrameTest = ModalControlTest;

const std::wstring kPageText =
    L"TODO: Place controls to manipulate properties of MXOVDocView Control on this dialog.";

/// The dialog of the property page inside a frame: the descendant dialog with the page's one text.
HWND PageIn(HWND frame) {
    HWND page = nullptr;
    EnumChildWindows(
        frame,
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t text[100] = L"";
            GetWindowTextW(window, text, ARRAYSIZE(text));
            if (text == kPageText) {
                *reinterpret_cast<HWND*>(parameter) = GetParent(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&page));
    return page;
}

} // namespace

TEST_F(PropertyFrameTest, PropertiesShowThePageInTheSystemsFrame) {
    HWND page = nullptr;
    std::wstring text;
    for (const LONG verb : {LONG{OLEIVERB_PROPERTIES}, 1L}) { // 1: the control's own verb of that name
        page = nullptr;
        const ModalDriver driver(
            kFrameTitle,
            [&] {
                page = PageIn(Shown(kFrameTitle));
                wchar_t shown[200] = L"";
                GetWindowTextW(GetWindow(page, GW_CHILD), shown, ARRAYSIZE(shown));
                text = shown;
                EXPECT_TRUE(container.WasCalled("EnableModeless(0)"));
            },
            IDCANCEL);
        EXPECT_EQ(S_OK, container.DoVerb(verb));
        EXPECT_TRUE(driver.WasUp());
        EXPECT_TRUE(page) << "its dialog is inside the frame";
        EXPECT_EQ(kPageText, text);
        EXPECT_FALSE(IsWindow(page));
        EXPECT_TRUE(container.WasCalled("EnableModeless(1)"));
        container.ForgetCalls();
    }
    EXPECT_EQ(S_FALSE, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->IsDirty());
}

TEST_F(PropertyFrameTest, ContainersOwnFrameComesFirst) {
    container.habits.hasPropertyFrame = true;
    EXPECT_EQ(S_OK, container.DoVerb(OLEIVERB_PROPERTIES));
    EXPECT_TRUE(container.WasCalled("ShowPropertyFrame"));
    EXPECT_FALSE(container.WasCalled("EnableModeless(0)"));
}

TEST_F(PropertyFrameTest, ClosedAndReleasedWhileItsPropertiesAreShown) {
    const ModalDriver driver(
        kFrameTitle, [&] { Leave(); }, IDCANCEL);
    IOleObject* object = As<IOleObject>(control.Get(), IID_IOleObject).Detach();
    object->DoVerb(OLEIVERB_PROPERTIES, nullptr, &container, 0, container.Window(), &container.position);
    object->Release();
    EXPECT_TRUE(driver.WasUp());
    ExpectNothingLeft();
}

TEST_F(PropertyFrameTest, ContainerIsEnabledAgainWhenTheControlIsClosedUnderItsProperties) {
    const ModalDriver driver(
        kFrameTitle,
        [&] {
            EXPECT_EQ(1U, Count("EnableModeless(0)"));
            container.Object()->Close(OLECLOSE_NOSAVE);
        },
        IDCANCEL);
    container.DoVerb(OLEIVERB_PROPERTIES);
    ASSERT_TRUE(driver.WasUp());
    EXPECT_EQ(1U, Count("EnableModeless(0)"));
    EXPECT_EQ(1U, Count("EnableModeless(1)"));
    Leave();
    ExpectNothingLeft();
}
