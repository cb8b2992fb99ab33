// Height, visibility and enabling of a section, and several sections in a stack.
#include "SectionBox.h"

#include <array>

namespace {

TEST_F(SectionBoxTest, SetHeightMovesWhatIsBelowByTheDifference) {
    BindWithControls();
    EXPECT_EQ(box.SetHeight(170), 20);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 270}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 320, 100, 360}));
    EXPECT_EQ(box.m_fullSize, CSize(300, 170));
    EXPECT_EQ(box.SetHeight(30), -140);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 130}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
}

TEST_F(SectionBoxTest, HeightBelowTheFoldedOneIsRefused) {
    BindWithControls();
    EXPECT_EQ(box.SetHeight(29), 0);
    EXPECT_EQ(box.SetHeight(0), 0);
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
    EXPECT_EQ(box.m_fullSize, CSize(300, 150));
}

TEST_F(SectionBoxTest, NegativeHeightEndsTheBoxAboveTheParentsBottom) {
    BindWithControls();
    EXPECT_EQ(box.SetHeight(-1), 150);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, BoxParent::kHeight - 100}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 450, 100, 490}));
}

TEST_F(SectionBoxTest, NegativeHeightIsRefusedWhenTooLittleIsLeft) {
    BindWithControls({20, 371, 320, 400});
    EXPECT_EQ(box.SetHeight(-1), 0);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 371, 320, 400}));
}

TEST_F(SectionBoxTest, UnfoldingUsesTheHeightThatWasSet) {
    BindWithControls();
    box.SetHeight(170);
    box.Toggle();
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    box.Toggle();
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 270}));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 320, 100, 360}));
}

TEST_F(SectionBoxTest, SetHeightCollectsWhileTheBoxIsEmpty) {
    Bind();
    below = parent.AddControl({20, 300, 100, 340});
    EXPECT_EQ(box.SetHeight(160), 10);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 310, 100, 350}));
}

TEST_F(SectionBoxTest, HiddenSectionLeavesNoGap) {
    HWND hidden = parent.AddControl({60, 120, 70, 130}, 2001, 0);
    BindWithControls();
    box.ShowSection(false);
    EXPECT_EQ(box.m_shown, 0);
    EXPECT_FALSE(IsShown(box.m_hWnd));
    EXPECT_FALSE(IsShown(inner));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 140, 100, 180})) << "up by 150 + 10";
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace) << "its own size stays";
    EXPECT_EQ(Listed(box.m_reshowWindows), Windows{inner});
    EXPECT_EQ(Listed(box.m_hiddenBeforeWindows), Windows{hidden});
    EXPECT_EQ(InvalidPart(parent.Window()), (RECT{0, 0, BoxParent::kWidth, BoxParent::kHeight}));

    parent.Paint();
    box.ShowSection(true);
    EXPECT_EQ(box.m_shown, 1);
    EXPECT_TRUE(IsShown(box.m_hWnd));
    EXPECT_TRUE(IsShown(inner));
    EXPECT_FALSE(IsShown(hidden));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
    EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
    EXPECT_EQ(InvalidPart(parent.Window()), (RECT{0, 0, BoxParent::kWidth, BoxParent::kHeight}));
}

TEST_F(SectionBoxTest, ShowingTheShownAndHidingTheHiddenDoesNothing) {
    BindWithControls();
    box.ShowSection(true);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
    box.ShowSection(false);
    box.ShowSection(false);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 140, 100, 180}));
}

TEST_F(SectionBoxTest, HidingAgainListsVisibleControlsAgain) {
    BindWithControls();
    box.ShowSection(false);
    box.ShowSection(true);
    box.ShowSection(false);
    EXPECT_EQ(Listed(box.m_reshowWindows), (Windows{inner, inner}));
}

TEST_F(SectionBoxTest, SectionWithoutControlsIsNeverHidden) {
    below = parent.AddControl({20, 300, 100, 340});
    Bind();
    box.ShowSection(false);
    EXPECT_EQ(box.m_shown, 1);
    EXPECT_TRUE(IsShown(box.m_hWnd));
    EXPECT_EQ(PlaceOf(below), (RECT{20, 300, 100, 340}));
}

// Hiding counts the full height, folded or not.
TEST_F(SectionBoxTest, HidingAFoldedSectionMovesByItsFullHeight) {
    BindWithControls();
    box.Toggle();
    box.ShowSection(false);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 20, 100, 60}));
    EXPECT_EQ(box.m_collapsed, 1);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 320, 130}));
    EXPECT_EQ(Listed(box.m_hiddenBeforeWindows), Windows{inner});
    box.ShowSection(true);
    EXPECT_EQ(PlaceOf(below), (RECT{20, 180, 100, 220}));
    EXPECT_TRUE(IsShown(inner)) << "every window of the re-show list is shown";
    EXPECT_EQ(box.m_collapsed, 1);
}

TEST_F(SectionBoxTest, EnableSectionEnablesTheBoxItself) {
    BindWithControls();
    box.EnableSection(false);
    EXPECT_EQ(box.m_enabled, 0);
    EXPECT_FALSE(IsWindowEnabled(box.m_hWnd));
    EXPECT_TRUE(IsWindowEnabled(inner));
    box.EnableSection(true);
    EXPECT_EQ(box.m_enabled, 1);
    EXPECT_TRUE(IsWindowEnabled(box.m_hWnd));
}

/// Four sections of 100 pixels in a stack, each with a list; two buttons above and two in the last.
class SectionStackTest : public testing::Test {
protected:
    SectionStackTest() {
        save = parent.AddControl({20, 10, 80, 35}, 1008);
        update = parent.AddControl({90, 10, 150, 35}, 1009);
        for (size_t i = 0; i < boxes.size(); ++i) {
            const LONG top = 40 + static_cast<LONG>(i) * 110;
            lists[i] = parent.AddControl({25, top + 22, 315, top + 95}, 1004 + static_cast<int>(i));
            groups[i] = parent.AddGroupBox({20, top, 320, top + 100}, L"Section", 1000 + static_cast<int>(i));
        }
        add = parent.AddControl({260, 372, 280, 390}, 1010);
        remove = parent.AddControl({285, 372, 305, 390}, 1011);
        for (size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_TRUE(boxes[i].SubclassWindow(groups[i]));
        }
    }

    std::array<SectionBox, 4> boxes;
    BoxParent parent;
    std::array<HWND, 4> lists{};
    std::array<HWND, 4> groups{};
    HWND save = nullptr;
    HWND update = nullptr;
    HWND add = nullptr;
    HWND remove = nullptr;
};

/// The places of windows, moved down by a shift.
template <size_t count>
std::array<RECT, count> Places(const std::array<HWND, count>& windows, int shift = 0) {
    std::array<RECT, count> places;
    for (size_t i = 0; i < count; ++i) {
        places[i] = PlaceOf(windows[i]);
        OffsetRect(&places[i], 0, shift);
    }
    return places;
}

TEST_F(SectionStackTest, FoldingTheFirstMovesAllThatFollows) {
    const std::array followers{groups[1], groups[2], groups[3], lists[1], lists[2], lists[3], add, remove};
    const std::array others{save, update, lists[0]};
    const auto folded = Places(followers, -70);
    const auto unfolded = Places(followers);
    const auto fixed = Places(others);
    boxes[0].Toggle();
    EXPECT_EQ(Places(followers), folded);
    EXPECT_EQ(Places(others), fixed);
    boxes[0].Toggle();
    EXPECT_EQ(Places(followers), unfolded);
    EXPECT_EQ(Places(others), fixed);
}

TEST_F(SectionStackTest, FoldingTheLastHidesItsButtonsWithItsList) {
    boxes[3].Toggle();
    EXPECT_FALSE(IsShown(lists[3]));
    EXPECT_FALSE(IsShown(add));
    EXPECT_FALSE(IsShown(remove));
    EXPECT_TRUE(IsShown(lists[2]));
    EXPECT_TRUE(IsShown(save));
    boxes[3].Toggle();
    EXPECT_TRUE(IsShown(add));
    EXPECT_TRUE(IsShown(remove));
}

// Each box remembers the windows and not their places, so folds may come and go in any order.
TEST_F(SectionStackTest, FoldsInAnyOrderComeBackToTheStart) {
    const auto start = Places(groups);
    for (const size_t i : {0, 2, 1, 3, 2, 0, 3, 1}) {
        boxes[i].Toggle();
    }
    EXPECT_EQ(Places(groups), start);
    for (HWND list : lists) {
        EXPECT_TRUE(IsShown(list));
    }
}

} // namespace
