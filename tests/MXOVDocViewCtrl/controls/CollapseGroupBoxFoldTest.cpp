// Which controls belong to a box, and what folding does.
#include "CollapseBox.h"

namespace {

using Windows = std::vector<HWND>;

class CollapseFoldTest : public CollapseBoxTest {
protected:
    Windows Members() const {
        Windows members;
        for (INT_PTR i = 0; i < box.m_children.GetSize(); ++i) {
            members.push_back(box.m_children.GetAt(i));
        }
        return members;
    }

    LONG Height() const {
        const RECT place = PlaceOf(box.m_hWnd);
        return place.bottom - place.top;
    }
};

// The box is (20, 100) to (220, 200).
TEST_F(CollapseFoldTest, SiblingsWithACornerInsideBelong) {
    HWND inside = parent.AddControl({40, 130, 90, 150});
    HWND leavesAtTheBottom = parent.AddControl({100, 150, 400, 300}); // top-left corner
    HWND entersFromTheTop = parent.AddControl({0, 50, 60, 120});      // bottom-right corner
    HWND atTheTopLeft = parent.AddControl({20, 100, 300, 300});
    HWND endsAtTheTopLeft = parent.AddControl({0, 50, 20, 100});
    HWND startsInTheLastPixel = parent.AddControl({219, 199, 300, 300});
    HWND endsBeforeTheEnd = parent.AddControl({0, 50, 219, 199});
    parent.AddControl({10, 120, 300, 140});  // wider than the box on both sides
    parent.AddControl({40, 50, 60, 300});    // taller on both sides
    parent.AddControl({0, 0, 300, 300});     // around it
    parent.AddControl({220, 150, 300, 300}); // starts at the right edge
    parent.AddControl({50, 200, 300, 300});  // starts at the bottom edge
    parent.AddControl({0, 50, 220, 150});    // ends at the right edge
    parent.AddControl({0, 50, 50, 200});     // ends at the bottom edge
    parent.AddControl({10, 150, 30, 300});   // other corners inside
    Bind();
    EXPECT_EQ(Members(), (Windows{inside, leavesAtTheBottom, entersFromTheTop, atTheTopLeft, endsAtTheTopLeft,
                                  startsInTheLastPixel, endsBeforeTheEnd}));
}

TEST_F(CollapseFoldTest, MembersStandInTheOrderOfTheWindows) {
    HWND first = parent.AddControl({40, 130, 90, 150});
    HWND second = parent.AddControl({100, 130, 150, 150});
    SetWindowPos(first, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Bind();
    EXPECT_EQ(Members(), (Windows{second, first}));
}

TEST_F(CollapseFoldTest, MembersAreLookedForAtEachPaintUntilThereIsOne) {
    Bind();
    EXPECT_TRUE(Members().empty());
    HWND late = parent.AddControl({40, 130, 90, 150});
    EXPECT_TRUE(Members().empty());
    box.Invalidate();
    parent.Paint();
    EXPECT_EQ(Members(), Windows{late});
    parent.AddControl({100, 130, 150, 150});
    box.Invalidate();
    parent.Paint();
    EXPECT_EQ(Members(), Windows{late}) << "never refreshed";
}

TEST_F(CollapseFoldTest, FoldedHeightIsThatOfTheTitleBar) {
    BindWithControl();
    const int textHeight = box.TextHeight();
    ASSERT_GT(textHeight, 5);
    box.SetCollapsed(true);
    EXPECT_TRUE(box.m_collapsed);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{20, 100, 220, 100 + textHeight + 6}));
}

TEST_F(CollapseFoldTest, TextHeightIsThatOfTheTitleInItsFont) {
    BindWithControl();
    HDC dc = GetDC(box.m_hWnd);
    HGDIOBJ old = SelectObject(dc, box.m_font.GetSafeHandle());
    SIZE extent{};
    GetTextExtentPoint32W(dc, L" Options ", 9, &extent);
    SelectObject(dc, old);
    ReleaseDC(box.m_hWnd, dc);
    EXPECT_EQ(box.TextHeight(), extent.cy);
}

TEST_F(CollapseFoldTest, BoxWithoutTitleFoldsToSixPixels) {
    Bind(L"");
    box.SetCollapsed(true);
    EXPECT_EQ(Height(), 6);
    box.SetCollapsed(false);
    EXPECT_EQ(Height(), 100);
}

TEST_F(CollapseFoldTest, UnfoldingRestoresThePlace) {
    BindWithControl();
    for (int round = 0; round < 3; ++round) {
        box.SetCollapsed(true);
        box.SetCollapsed(false);
        EXPECT_FALSE(box.m_collapsed);
        EXPECT_EQ(PlaceOf(box.m_hWnd), kPlace);
    }
}

TEST_F(CollapseFoldTest, UnfoldingRestoresTheHeightOfTheLastUnfoldedRender) {
    BindWithControl();
    box.MoveWindow(30, 110, 180, 120);
    box.SetCollapsed(true);
    box.MoveWindow(40, 50, 180, Height());
    box.SetCollapsed(false);
    EXPECT_EQ(PlaceOf(box.m_hWnd), (RECT{40, 50, 220, 170}));
}

TEST_F(CollapseFoldTest, MembersAreHiddenAndDisabledWhileFolded) {
    BindWithControl();
    HWND outside = parent.AddControl({300, 130, 350, 150});
    for (int round = 0; round < 2; ++round) {
        box.SetCollapsed(true);
        EXPECT_FALSE(IsShown(child));
        EXPECT_FALSE(IsWindowEnabled(child));
        EXPECT_TRUE(IsShown(outside));
        box.SetCollapsed(false);
        EXPECT_TRUE(IsShown(child));
        EXPECT_TRUE(IsWindowEnabled(child));
    }
}

TEST_F(CollapseFoldTest, FoldingTwiceInARowChangesNothingMore) {
    BindWithControl();
    box.SetCollapsed(true);
    const RECT folded = PlaceOf(box.m_hWnd);
    box.SetCollapsed(true);
    EXPECT_EQ(PlaceOf(box.m_hWnd), folded);
    EXPECT_FALSE(IsShown(child));
    EXPECT_FALSE(IsWindowEnabled(child));
}

// Unfolding asks no control what it was before.
TEST_F(CollapseFoldTest, UnfoldingShowsAndEnablesEveryMember) {
    child = parent.AddControl({40, 130, 90, 150}, 2000, WS_DISABLED);
    Bind();
    box.SetCollapsed(true);
    box.SetCollapsed(false);
    EXPECT_TRUE(IsShown(child));
    EXPECT_TRUE(IsWindowEnabled(child));
}

std::vector<UINT> received;

LRESULT CALLBACK RecordState(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENABLE || message == WM_SHOWWINDOW) {
        received.push_back(message);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(CollapseFoldTest, EnablingComesBeforeShowing) {
    BindWithControl();
    SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordState));
    for (const bool collapsed : {true, false}) {
        received.clear();
        box.SetCollapsed(collapsed);
        EXPECT_EQ(received, (std::vector<UINT>{WM_ENABLE, WM_SHOWWINDOW}));
    }
}

TEST_F(CollapseFoldTest, ParentIsToldWhenTheSizeIsThereButNothingIsRedrawn) {
    BindWithControl();
    LONG toldHeight = 0;
    int toldErasures = 0;
    parent.onCommand = [&](const Command&) {
        toldHeight = Height();
        toldErasures = parent.Erasures();
    };
    const int textHeight = box.TextHeight();
    box.SetCollapsed(true);
    EXPECT_EQ(parent.Commands(), (std::vector<Command>{{1282, box.m_hWnd}}));
    EXPECT_EQ(toldHeight, textHeight + 6);
    EXPECT_EQ(parent.Erasures(), toldErasures + 1);
    parent.ForgetCommands();
    box.SetCollapsed(false);
    EXPECT_EQ(parent.Commands(), (std::vector<Command>{{0x502, box.m_hWnd}}));
    EXPECT_EQ(toldHeight, 100);
}

TEST_F(CollapseFoldTest, ParentMayDestroyTheBoxWhenItIsTold) {
    BindWithControl();
    parent.onCommand = [](const Command& command) { DestroyWindow(command.window); };
    SendMouse(box.m_hWnd, WM_LBUTTONDOWN, {100, 5}, MK_LBUTTON);
    EXPECT_EQ(box.m_hWnd, nullptr);
    EXPECT_EQ(parent.Commands().size(), 1u);
}

// The memory surface always has the size of the client area.
TEST_F(CollapseFoldTest, SurfaceFollowsTheSize) {
    BindWithControl();
    const auto surfaceSize = [this] {
        BITMAP bitmap{};
        GetObjectW(GetCurrentObject(box.m_memoryDC.m_hDC, OBJ_BITMAP), sizeof bitmap, &bitmap);
        return CSize(bitmap.bmWidth, bitmap.bmHeight);
    };
    EXPECT_EQ(surfaceSize(), CSize(200, 100));
    box.SetCollapsed(true);
    EXPECT_EQ(surfaceSize(), CSize(200, box.TextHeight() + 6));
    box.SetCollapsed(false);
    EXPECT_EQ(surfaceSize(), CSize(200, 100));
}

} // namespace
