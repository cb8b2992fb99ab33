// What the mouse does to a section.
#include "RealMouse.h"
#include "SectionBox.h"

namespace {

using SectionMouseTest = SectionBoxTest;

LRESULT HitTest(const SectionBox& box, POINT client) {
    ClientToScreen(box.m_hWnd, &client);
    return SendMessageW(box.m_hWnd, WM_NCHITTEST, 0, MAKELPARAM(client.x, client.y));
}

TEST_F(SectionMouseTest, HeaderTakesTheMouseOverItsFullWidthAndTwentyPixels) {
    BindWithControls();
    for (const POINT point : {POINT{0, 0}, POINT{299, 0}, POINT{0, 19}, POINT{299, 19}, POINT{150, 10}}) {
        EXPECT_EQ(HitTest(box, point), HTCLIENT) << point.x << ", " << point.y;
    }
    for (const POINT point : {POINT{150, 20}, POINT{0, 149}}) {
        EXPECT_EQ(HitTest(box, point), HTTRANSPARENT) << point.x << ", " << point.y;
    }
}

TEST_F(SectionMouseTest, HeaderOfABoxThatCannotFoldLetsTheMouseThrough) {
    box.m_collapsible = 0;
    BindWithControls();
    EXPECT_EQ(HitTest(box, {150, 10}), HTTRANSPARENT);
}

TEST_F(SectionMouseTest, PressAndReleaseOnTheHeaderToggle) {
    BindWithControls();
    Click(box.m_hWnd, {150, 10});
    EXPECT_EQ(box.m_collapsed, 1);
    Click(box.m_hWnd, {150, 10});
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_EQ(box.m_pressed, 0);
}

TEST_F(SectionMouseTest, OnlyTheHeaderCounts) {
    BindWithControls();
    Click(box.m_hWnd, {150, 20});
    EXPECT_EQ(box.m_collapsed, 0);
    Click(box.m_hWnd, {299, 19});
    EXPECT_EQ(box.m_collapsed, 1);
}

TEST_F(SectionMouseTest, PressTakesNoCapture) {
    BindWithControls();
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {150, 10}, MK_LBUTTON);
    EXPECT_EQ(box.m_pressed, 1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SectionMouseTest, ReleaseOutsideForgetsThePress) {
    BindWithControls();
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {150, 10}, MK_LBUTTON);
    SendMouse(box.m_hWnd, WM_MOUSEMOVE, {150, 60}, MK_LBUTTON);
    SendMouse(box.m_hWnd, WM_LBUTTONUP, {150, 60});
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_EQ(box.m_pressed, 0);
    SendMouse(box.m_hWnd, WM_LBUTTONUP, {150, 10});
    EXPECT_EQ(box.m_collapsed, 0) << "a release without a press";
}

TEST_F(SectionMouseTest, ReleaseElsewhereOnTheHeaderToggles) {
    BindWithControls();
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {10, 3}, MK_LBUTTON);
    SendMouse(box.m_hWnd, WM_MOUSEMOVE, {100, 60}, MK_LBUTTON);
    SendMouse(box.m_hWnd, WM_LBUTTONUP, {290, 17});
    EXPECT_EQ(box.m_collapsed, 1);
}

TEST_F(SectionMouseTest, PressBelowTheHeaderKeepsAnEarlierPress) {
    BindWithControls();
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {150, 10}, MK_LBUTTON);
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {150, 60}, MK_LBUTTON);
    EXPECT_EQ(box.m_pressed, 1);
}

TEST_F(SectionMouseTest, EveryReleaseGivesTheMouseFree) {
    BindWithControls();
    SetCapture(box.m_hWnd);
    SendMouse(box.m_hWnd, WM_LBUTTONUP, {150, 60});
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SectionMouseTest, DoubleClickTogglesOnce) {
    BindWithControls();
    Click(box.m_hWnd, {150, 10});
    SendMouse(box.m_hWnd, WM_LBUTTONDBLCLK, {150, 10}, MK_LBUTTON);
    EXPECT_EQ(box.m_pressed, 0);
    SendMouse(box.m_hWnd, WM_LBUTTONUP, {150, 10});
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SectionMouseTest, RealMouseFoldsAndUnfolds) {
    BindWithControls();
    RealMouse mouse;
    mouse.MoveTo(box.m_hWnd, {5, 19});
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return box.m_collapsed == 1; }));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    mouse.MoveTo(box.m_hWnd, {250, 3}); // too far away for a double click
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return box.m_collapsed == 0; }));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
}

TEST_F(SectionMouseTest, RealDoubleClickFoldsOnce) {
    BindWithControls();
    RealMouse mouse;
    mouse.MoveTo(box.m_hWnd, {150, 10});
    mouse.DoubleClick();
    EXPECT_TRUE(PumpUntil([&] { return mouse.Delivered(4); }));
    EXPECT_EQ(box.m_collapsed, 1);
}

TEST_F(SectionMouseTest, RealClickInTheBodyReachesTheParent) {
    BindWithControls();
    RealMouse mouse;
    mouse.MoveTo(box.m_hWnd, {150, 60});
    mouse.Click();
    EXPECT_TRUE(PumpUntil([&] { return mouse.Delivered(2); }));
    EXPECT_EQ(mouse.LastReceiver(), parent.Window());
    EXPECT_EQ(box.m_collapsed, 0);
}

} // namespace
