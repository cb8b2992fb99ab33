// What the mouse does to a box.
#include "CollapseBox.h"
#include "Picture.h"
#include "RealMouse.h"

namespace {

class CollapseMouseTest : public CollapseBoxTest {
protected:
    void Move(POINT point) { SendMouse(box.m_hWnd, WM_MOUSEMOVE, point); }
    bool HoldsMouse() const { return GetCapture() == box.m_hWnd; }

    /// The fill of the title bar as it is on the screen, beside title and glyph.
    COLORREF HeaderPixel() const { return Picture(box.m_hWnd).At(60, 8); }

    std::vector<WPARAM> Told() const {
        std::vector<WPARAM> values;
        for (const Command& command : parent.Commands()) {
            EXPECT_EQ(command.window, box.m_hWnd);
            values.push_back(command.wParam);
        }
        return values;
    }
};

TEST_F(CollapseMouseTest, ClickOnTheTitleBarFoldsAndUnfolds) {
    BindWithControl();
    Click(box.m_hWnd, {100, 5});
    EXPECT_TRUE(box.m_collapsed);
    Click(box.m_hWnd, {100, 5});
    EXPECT_FALSE(box.m_collapsed);
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
}

// The title bar is (1, 1) to (199, bottom); its surroundings of one pixel count too.
TEST_F(CollapseMouseTest, ClickWithinOnePixelOfTheTitleBarToggles) {
    BindWithControl();
    const LONG bottom = box.m_headerRect.bottom;
    for (const POINT point : {POINT{0, 0}, POINT{199, 0}, POINT{0, bottom}, POINT{199, bottom}}) {
        SendMouse(box.m_hWnd, WM_LBUTTONDOWN, point, MK_LBUTTON);
        EXPECT_TRUE(box.m_collapsed) << point.x << ", " << point.y;
        box.SetCollapsed(false);
    }
    for (const POINT point : {POINT{100, bottom + 1}, POINT{200, 5}, POINT{-1, 5}, POINT{100, -1}}) {
        SendMouse(box.m_hWnd, WM_LBUTTONDOWN, point, MK_LBUTTON);
        EXPECT_FALSE(box.m_collapsed) << point.x << ", " << point.y;
    }
}

TEST_F(CollapseMouseTest, PressCountsOnlyWithTheLeftButtonInTheFlags) {
    BindWithControl();
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {100, 5}, 0);
    EXPECT_FALSE(box.m_collapsed);
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {100, 5}, MK_LBUTTON | MK_SHIFT);
    EXPECT_TRUE(box.m_collapsed);
}

struct Refusing : CollapseBox {
    CollapseGroupBox& SetCollapsed(bool collapsed) override {
        asked = collapsed;
        return *this;
    }
    bool asked = false;
};

TEST_F(CollapseMouseTest, ClickGoesThroughTheVirtualOperation) {
    Refusing refusing;
    ASSERT_TRUE(refusing.SubclassWindow(parent.AddGroupBox(kPlace, L"Options")));
    SendMouse(refusing.m_hWnd, WM_LBUTTONDOWN, {100, 5}, MK_LBUTTON);
    EXPECT_TRUE(refusing.asked);
    EXPECT_FALSE(refusing.m_collapsed);
    refusing.DestroyWindow();
}

TEST_F(CollapseMouseTest, TitleBarIsHotAndTheMouseHeldWhileItIsThere) {
    BindWithControl();
    ASSERT_NE(box.m_headerHotColour, box.m_headerNormalColour);
    const LONG bottom = box.m_headerRect.bottom;
    EXPECT_FALSE(HoldsMouse());
    EXPECT_EQ(HeaderPixel(), box.m_headerNormalColour);
    for (int round = 0; round < 2; ++round) {
        Move({100, bottom}); // within one pixel
        EXPECT_TRUE(HoldsMouse());
        EXPECT_EQ(HeaderPixel(), box.m_headerHotColour);
        Move({50, 5});
        EXPECT_TRUE(HoldsMouse());
        Move({100, bottom + 1});
        EXPECT_FALSE(HoldsMouse());
        EXPECT_EQ(HeaderPixel(), box.m_headerNormalColour);
        Move({100, 60});
        EXPECT_FALSE(HoldsMouse());
    }
    EXPECT_EQ(Told(), (std::vector<WPARAM>{1280, 1281, 1280, 1281}));
}

TEST_F(CollapseMouseTest, EnteringIsToldAfterTheRedrawAndBeforeTheMouseIsHeld) {
    BindWithControl();
    bool held = true;
    COLORREF pixel = 0;
    parent.onCommand = [&](const Command&) {
        held = HoldsMouse();
        pixel = HeaderPixel();
    };
    Move({100, 5});
    EXPECT_FALSE(held);
    EXPECT_EQ(pixel, box.m_headerHotColour);
    EXPECT_TRUE(HoldsMouse());
}

TEST_F(CollapseMouseTest, LeavingIsToldAfterTheRedrawAndBeforeTheMouseIsFree) {
    BindWithControl();
    Move({100, 5});
    bool held = false;
    COLORREF pixel = 0;
    parent.onCommand = [&](const Command&) {
        held = HoldsMouse();
        pixel = HeaderPixel();
    };
    Move({100, 60});
    EXPECT_TRUE(held);
    EXPECT_EQ(pixel, box.m_headerNormalColour);
    EXPECT_FALSE(HoldsMouse());
}

TEST_F(CollapseMouseTest, HeaderColourLastsUntilTheNextTransition) {
    BindWithControl();
    const COLORREF hot = box.m_headerHotColour;
    const COLORREF normal = box.m_headerNormalColour;
    box.SetHeaderColor(RGB(10, 200, 30));
    EXPECT_EQ(HeaderPixel(), RGB(10, 200, 30));
    EXPECT_EQ(box.m_headerHotColour, hot);
    EXPECT_EQ(box.m_headerNormalColour, normal);
    Move({100, 5});
    EXPECT_EQ(HeaderPixel(), hot);
    Move({100, 60});
    EXPECT_EQ(HeaderPixel(), normal);
}

TEST_F(CollapseMouseTest, ParentMayDestroyTheBoxWhenTheMouseEnters) {
    BindWithControl();
    parent.onCommand = [](const Command& command) { DestroyWindow(command.window); };
    Move({100, 5});
    EXPECT_EQ(box.m_hWnd, nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(CollapseMouseTest, RealMouseHoversFoldsUnfoldsAndLeaves) {
    BindWithControl();
    RealMouse mouse;
    ASSERT_TRUE(mouse.Reach(box.m_hWnd, {100, 60}));
    EXPECT_TRUE(Told().empty());

    mouse.MoveTo(box.m_hWnd, {60, 5});
    ASSERT_TRUE(PumpUntil([&] { return HoldsMouse(); }));
    EXPECT_EQ(HeaderPixel(), box.m_headerHotColour);
    mouse.Press();
    ASSERT_TRUE(PumpUntil([&] { return box.m_collapsed; }));
    EXPECT_FALSE(IsShown(child));
    mouse.Release();
    ASSERT_TRUE(PumpUntil([&] { return mouse.Delivered(2); }));

    mouse.MoveTo(box.m_hWnd, {150, 5});
    ASSERT_TRUE(PumpUntil([&] { return HoldsMouse(); }));
    mouse.Click();
    ASSERT_TRUE(PumpUntil([&] { return !box.m_collapsed && mouse.Delivered(4); }));
    EXPECT_TRUE(IsShown(child));

    mouse.MoveTo(box.m_hWnd, {140, 5});
    ASSERT_TRUE(PumpUntil([&] { return HoldsMouse(); }));
    mouse.MoveTo(parent.Window(), {350, 450});
    ASSERT_TRUE(PumpUntil([&] { return !HoldsMouse(); }));
    EXPECT_EQ(HeaderPixel(), box.m_headerNormalColour);
    EXPECT_EQ(Told().front(), 0x500u);
    EXPECT_EQ(Told().back(), 0x501u);
}

} // namespace
