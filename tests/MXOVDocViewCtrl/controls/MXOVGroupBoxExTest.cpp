#include "SectionBox.h"

#include "ImportHook.h"

namespace {

using Move = std::pair<HWND, BOOL>; // a window, and whether it was repainted
std::vector<Move> moves;

BOOL WINAPI RecordMove(HWND window, int /*x*/, int /*y*/, int /*width*/, int /*height*/, BOOL repaint) {
    moves.emplace_back(window, repaint);
    return TRUE;
}

TEST_F(SectionBoxTest, BindingCapturesTheFullSize) {
    Bind();
    EXPECT_EQ(box.m_fullSize, CSize(300, 150));
}

// The catch area is (15, 95) to (325, 255): left and top belong to it, right and bottom do not.
TEST_F(SectionBoxTest, ControlsWithBothCornersInTheCatchAreaAreInside) {
    HWND whole = parent.AddControl({15, 95, 324, 254});
    HWND small = parent.AddControl({30, 120, 40, 130});
    parent.AddControl({14, 120, 40, 130});  // starts too far left
    parent.AddControl({30, 94, 40, 130});   // starts too high
    parent.AddControl({30, 120, 325, 130}); // ends too far right
    parent.AddControl({30, 120, 40, 255});  // ends too low
    Bind();
    EXPECT_EQ(Listed(box.m_innerWindows), (Windows{whole, small}));
    EXPECT_TRUE(box.m_windowsBelow.IsEmpty());
}

TEST_F(SectionBoxTest, ControlsThatStartLowerThanTheBoxAreBelowWhereverTheyStand) {
    HWND under = parent.AddControl({20, 251, 100, 300});
    HWND aside = parent.AddControl({360, 400, 390, 410});
    parent.AddControl({20, 250, 100, 300});  // starts at the box's bottom
    parent.AddControl({360, 100, 390, 260}); // beside
    parent.AddControl({20, 10, 100, 40});    // above
    Bind();
    EXPECT_EQ(Listed(box.m_windowsBelow), (Windows{under, aside}));
    EXPECT_TRUE(box.m_innerWindows.IsEmpty());
}

// The catch area reaches below the box: a small control there is inside, not below.
TEST_F(SectionBoxTest, ControlInTheMarginBelowIsInside) {
    HWND margin = parent.AddControl({30, 251, 40, 254});
    Bind();
    EXPECT_EQ(Listed(box.m_innerWindows), Windows{margin});
    EXPECT_TRUE(box.m_windowsBelow.IsEmpty());
}

TEST_F(SectionBoxTest, ListsFollowTheOrderOfTheWindows) {
    HWND first = parent.AddControl({30, 120, 40, 130});
    HWND second = parent.AddControl({50, 120, 60, 130});
    SetWindowPos(first, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Bind();
    EXPECT_EQ(Listed(box.m_innerWindows), (Windows{second, first}));
}

TEST_F(SectionBoxTest, ExcludedIdentifierIsIgnoredOnlyWithTheFlag) {
    parent.AddControl({30, 120, 40, 130}, 77);
    HWND other = parent.AddControl({50, 120, 60, 130}, 78);
    parent.AddControl({30, 300, 40, 310}, 77);
    box.m_excludeById = 1;
    box.m_excludedId = 77;
    Bind();
    EXPECT_EQ(Listed(box.m_innerWindows), Windows{other});
    EXPECT_TRUE(box.m_windowsBelow.IsEmpty());

    SectionBox plain;
    plain.m_excludedId = 77;
    ASSERT_TRUE(plain.SubclassWindow(parent.AddGroupBox(kPlace, L"")));
    EXPECT_EQ(plain.m_innerWindows.GetCount(), 3) << "both controls and the other box";
    plain.Detach();
}

TEST_F(SectionBoxTest, FoldingHidesTheInsideAndMovesWhatIsBelow) {
    BindWithControls();
    HWND beside = parent.AddControl({350, 100, 390, 140});
    box.Collapse();
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_FALSE(IsShown(inner));
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 130}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    EXPECT_EQ(PlaceOf(beside), (RECT{350, 100, 390, 140}));
}

TEST_F(SectionBoxTest, WindowsBelowMoveWithoutARepaintAndTheBoxWithOne) {
    BindWithControls();
    moves.clear();
    const ImportHook hook("MoveWindow", RecordMove);
    ASSERT_TRUE(hook.Real());
    box.Collapse();
    box.Expand();
    EXPECT_EQ(moves,
              (std::vector<Move>{{below, FALSE}, {box.m_hWnd, TRUE}, {below, FALSE}, {box.m_hWnd, TRUE}}));
}

TEST_F(SectionBoxTest, UnfoldingRestoresEverything) {
    BindWithControls();
    for (int round = 0; round < 3; ++round) {
        box.Toggle();
        EXPECT_EQ(box.m_collapsed, 1);
        box.Toggle();
        EXPECT_EQ(box.m_collapsed, 0);
        EXPECT_TRUE(IsShown(inner));
        EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
        EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
    }
    EXPECT_EQ(Listed(box.m_reshowWindows), Windows{inner}) << "kept, without duplicates";
    EXPECT_TRUE(box.m_hiddenBeforeWindows.IsEmpty());
}

TEST_F(SectionBoxTest, WhatWasHiddenBeforeFoldingStaysHidden) {
    HWND hidden = parent.AddControl({60, 120, 70, 130}, 2001, 0);
    BindWithControls();
    box.Toggle();
    box.Toggle();
    EXPECT_FALSE(IsShown(hidden));
    EXPECT_TRUE(IsShown(inner));
    EXPECT_EQ(Listed(box.m_hiddenBeforeWindows), Windows{hidden});
    box.Toggle();
    EXPECT_EQ(Listed(box.m_hiddenBeforeWindows), (Windows{hidden, hidden}));
}

TEST_F(SectionBoxTest, ControlHiddenByTheDialogLeavesTheReshowList) {
    BindWithControls();
    box.Toggle();
    box.Toggle();
    ShowWindow(inner, SW_HIDE);
    box.Toggle();
    EXPECT_TRUE(box.m_reshowWindows.IsEmpty());
    EXPECT_EQ(Listed(box.m_hiddenBeforeWindows), Windows{inner});
    box.Toggle();
    EXPECT_FALSE(IsShown(inner));
}

TEST_F(SectionBoxTest, FoldingInvalidatesTheWholeParentAndTellsItNothing) {
    BindWithControls();
    EXPECT_EQ(InvalidPart(parent.Window()), RECT{});
    for (const int folded : {1, 0}) {
        box.Toggle();
        EXPECT_EQ(box.m_collapsed, folded);
        EXPECT_EQ(InvalidPart(parent.Window()), (RECT{0, 0, BoxParent::kWidth, BoxParent::kHeight}));
        const int erasures = parent.Erasures();
        parent.Paint();
        EXPECT_EQ(parent.Erasures(), erasures + 1);
    }
    EXPECT_TRUE(parent.Commands().empty());
}

TEST_F(SectionBoxTest, LowBoxHidesItsContentsButStaysUnfolded) {
    BindWithControls({20, 100, 320, 130});
    box.Collapse();
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_FALSE(IsShown(inner));
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 130}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
    EXPECT_EQ(InvalidPart(parent.Window()), (RECT{30, 121, 70, 129})) << "only where the control was";
}

TEST_F(SectionBoxTest, BoxOfOnePixelMoreFolds) {
    BindWithControls({20, 100, 320, 131});
    box.Collapse();
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 130}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 299, 100, 339}));
}

TEST_F(SectionBoxTest, UnfoldingMovesByANegativeShiftToo) {
    BindWithControls({20, 100, 320, 124});
    box.Expand();
    EXPECT_EQ(PlaceOf(below), (RECT{20, 294, 100, 334}));
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 124}));
}

TEST_F(SectionBoxTest, BoxWithoutControlsDoesNotFoldUntilOneIsFound) {
    below = parent.AddControl({20, 300, 100, 340});
    Bind();
    box.Toggle();
    box.Expand();
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));

    inner = parent.AddControl({30, 120, 40, 130});
    box.Toggle();
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_FALSE(IsShown(inner));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220})) << "moved once, though it was collected three times";
}

TEST_F(SectionBoxTest, ControlsAddedLaterAreNotTracked) {
    BindWithControls();
    HWND late = parent.AddControl({60, 120, 70, 130});
    box.Toggle();
    EXPECT_TRUE(IsShown(late));
}

TEST_F(SectionBoxTest, FoldingKeepsThePlaceTheBoxHasMovedTo) {
    BindWithControls();
    MoveWindow(box.m_hWnd, 40, 60, 300, 150, FALSE);
    box.Toggle();
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{40, 60, 340, 90}));
    box.Toggle();
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{40, 60, 340, 210}));
}

HWND capturedWhileHiding = nullptr;

LRESULT CALLBACK RecordCapture(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SHOWWINDOW) {
        capturedWhileHiding = GetCapture();
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(SectionBoxTest, ToggleHoldsTheMouseOnlyWhileItWorks) {
    BindWithControls();
    SetWindowLongPtrW(inner, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordCapture));
    box.Toggle();
    EXPECT_EQ(capturedWhileHiding, box.m_hWnd);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SectionBoxTest, RectanglesOfTheHeaderAndItsIcons) {
    Bind();
    EXPECT_EQ(box.GetHeaderRect(), CRect(0, 0, 300, 20));
    EXPECT_EQ(box.GetIconRect(), CRect(282, 2, 298, 18));
    EXPECT_EQ(box.GetSecondIconRect(), CRect(262, 2, 278, 18));
    box.m_headerHeight = 16;
    EXPECT_EQ(box.GetIconRect(), CRect(284, 0, 300, 16));
    box.m_headerHeight = 12;
    EXPECT_EQ(box.GetIconRect(), CRect(288, 0, 300, 12)) << "never grown";
    EXPECT_EQ(box.GetSecondIconRect(), CRect(276, 0, 288, 12));
    box.m_headerHeight = 25;
    EXPECT_EQ(box.GetIconRect(), CRect(279, 4, 296, 21));
}

TEST_F(SectionBoxTest, SetExpandedTogglesOnlyWhenAskedForTheOtherState) {
    BindWithControls();
    box.SetExpanded(true);
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
    box.SetExpanded(false);
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    box.SetExpanded(false);
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    box.SetExpanded(true);
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
}

} // namespace
