// What a box shows, pixel by pixel. Its client area is 200 x 100; the title bar begins at (1, 1).
#include "CollapseBox.h"
#include "GdiObjectCount.h"
#include "Picture.h"

#include <set>
#include <utility>

namespace {

constexpr COLORREF kBorder = RGB(200, 10, 10);
constexpr COLORREF kHeader = RGB(10, 200, 10);
constexpr COLORREF kBackground = RGB(10, 10, 200);
constexpr COLORREF kGlyph = RGB(200, 200, 10);

using Pixels = std::set<std::pair<int, int>>;

class CollapsePaintTest : public CollapseBoxTest {
protected:
    /// Binds a box in colours that cannot be confused.
    void BindColoured(const wchar_t* title = L"Abc") {
        box.m_glyphColour = kGlyph;
        Bind(title);
        LOGFONT font = box.m_logFont;
        font.lfQuality = Picture::kTextQuality;
        box.SetLogFont(font);
        box.SetBackgroundColor(kBackground).SetBorderColor(kBorder).SetHeaderColor(kHeader);
    }

    Picture Look() {
        parent.Paint();
        return Picture(box.m_hWnd);
    }

    /// The pixels of the glyph, relative to the point, that have the glyph's colour. Everything around them
    /// must be title bar.
    static Pixels Glyph(const Picture& picture, int left, int top);

    /// Checks that the title stands exactly in the rectangle.
    void ExpectTitleAt(const CRect& place, const wchar_t* title);
};

Pixels CollapsePaintTest::Glyph(const Picture& picture, int left, int top) {
    Pixels pixels;
    for (int y = top - 1; y < top + 9; ++y) {
        for (int x = left - 3; x < left + 9; ++x) {
            if (picture.At(x, y) == kGlyph) {
                pixels.emplace(x - left, y - top);
            } else {
                EXPECT_EQ(picture.At(x, y), kHeader) << x << ", " << y;
            }
        }
    }
    return pixels;
}

void CollapsePaintTest::ExpectTitleAt(const CRect& place, const wchar_t* title) {
    const Picture picture = Look();
    BoxParent canvas;
    HDC dc = GetDC(canvas.Window());
    CBrush brush(kHeader);
    RECT everything{0, 0, BoxParent::kWidth, BoxParent::kHeight};
    FillRect(dc, &everything, brush);
    HGDIOBJ old = SelectObject(dc, box.m_font.GetSafeHandle());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, box.m_titleColour);
    TextOutW(dc, place.left, place.top, title, lstrlenW(title));
    SelectObject(dc, old);
    ReleaseDC(canvas.Window(), dc);
    const Picture expected(canvas.Window());
    EXPECT_GT(expected.Count(place, box.m_titleColour), 5);
    for (int y = place.top; y < place.bottom; ++y) {
        for (int x = place.left; x < place.right; ++x) {
            ASSERT_EQ(picture.At(x, y), expected.At(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(CollapsePaintTest, OnlyTheFirstPaintingRenders) {
    ASSERT_TRUE(box.SubclassWindow(parent.AddGroupBox(kPlace, L"Abc")));
    const RECT middle{20, 10, 180, 11};
    const auto shows = [&](COLORREF colour) {
        box.m_headerColour = colour; // without the setter, which renders
        box.Invalidate();
        return Look().Count(middle, colour) > 0;
    };
    EXPECT_TRUE(shows(kHeader));
    EXPECT_FALSE(shows(kBorder));
}

TEST_F(CollapsePaintTest, ASetterPaintsAtOnceInAParentThatClipsItsChildren) {
    SetWindowLongW(parent.Window(), GWL_STYLE, WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN);
    Bind();
    box.SetHeaderColor(kHeader);
    EXPECT_GT(Picture(box.m_hWnd).Count({20, 10, 180, 11}, kHeader), 0);
}

TEST_F(CollapsePaintTest, TitleBarIsAsHighAsTheTitleAndFour) {
    BindColoured();
    EXPECT_EQ(box.m_headerRect, CRect(1, 1, 199, 1 + box.TextHeight() + 4));
    EXPECT_EQ(box.m_frameRect, CRect(1, box.m_headerRect.bottom, 199, 99));
}

TEST_F(CollapsePaintTest, TitleBarIsRoundAtTheTopAndSquareBelowWhileUnfolded) {
    BindColoured();
    const Picture picture = Look();
    const int bottom = box.m_headerRect.bottom;
    EXPECT_EQ(picture.Count({10, 1, 190, 2}, kBorder), 180) << "top edge";
    EXPECT_EQ(picture.At(1, 1), kBackground) << "round corner";
    EXPECT_EQ(picture.At(198, 1), kBackground);
    EXPECT_EQ(picture.Count({2, 6, 5, bottom}, kHeader), 3 * (bottom - 6)) << "square from y = 6 on";
    EXPECT_EQ(picture.Count({198, 6, 199, bottom}, kHeader), bottom - 6);
    EXPECT_EQ(picture.Count({2, bottom - 1, 199, bottom}, kHeader), 197) << "no line below the title bar";
}

TEST_F(CollapsePaintTest, CornersAreThoseOfAnEllipseOfTenPixels) {
    BindColoured();
    const Picture picture = Look();
    BoxParent canvas;
    HDC dc = GetDC(canvas.Window());
    CPen pen(PS_SOLID, 1, kBorder);
    CBrush brush(kHeader);
    CBrush ground(kBackground);
    const RECT everything{0, 0, BoxParent::kWidth, BoxParent::kHeight};
    FillRect(dc, &everything, ground);
    HGDIOBJ oldPen = SelectObject(dc, pen);
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    RoundRect(dc, 1, 1, 199, box.m_headerRect.bottom, 10, 10);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    ReleaseDC(canvas.Window(), dc);
    const Picture expected(canvas.Window());
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x) {
            EXPECT_EQ(picture.At(x, y), expected.At(x, y)) << x << ", " << y;
            EXPECT_EQ(picture.At(199 - x, y), expected.At(199 - x, y)) << 199 - x << ", " << y;
        }
    }
}

TEST_F(CollapsePaintTest, FrameIsOpenAtTheTop) {
    BindColoured();
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({1, 6, 2, 100}, kBorder), 94) << "left";
    EXPECT_EQ(picture.Count({1, 99, 200, 100}, kBorder), 199) << "bottom";
    EXPECT_EQ(picture.Count({199, 7, 200, 100}, kBorder), 93) << "right, but for the last pixel of the line";
    EXPECT_NE(picture.At(199, 6), kBorder);
    EXPECT_EQ(picture.Count({2, box.m_headerRect.bottom, 199, 99}, GetSysColor(COLOR_BTNFACE)),
              197 * (99 - box.m_headerRect.bottom))
        << "the body";
    EXPECT_EQ(picture.Count({0, 0, 1, 100}, kBackground), 100) << "left of it all";
    EXPECT_EQ(picture.Count({0, 0, 200, 1}, kBackground), 200) << "above it all";
}

TEST_F(CollapsePaintTest, FaceStripIsSeventeenPixelsHigh) {
    BindColoured();
    LOGFONT font = box.m_logFont;
    font.lfHeight = 6;
    lstrcpyW(font.lfFaceName, L"Tahoma");
    box.SetLogFont(font);
    ASSERT_LT(box.m_headerRect.bottom, 15);
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({2, 15, 199, 17}, kBackground), 197 * 2);
    EXPECT_EQ(picture.Count({2, 17, 199, 18}, GetSysColor(COLOR_BTNFACE)), 197);
}

TEST_F(CollapsePaintTest, FoldedTitleBarIsClosedAllAround) {
    BindColoured();
    box.SetCollapsed(true);
    const Picture picture = Look();
    const int bottom = box.m_headerRect.bottom;
    ASSERT_EQ(picture.Height(), bottom + 1);
    EXPECT_EQ(picture.Count({10, 1, 190, 2}, kBorder), 180);
    EXPECT_EQ(picture.Count({10, bottom - 1, 190, bottom}, kBorder), 180);
    EXPECT_EQ(picture.Count({1, 7, 2, bottom - 6}, kBorder), bottom - 13);
    EXPECT_EQ(picture.Count({198, 7, 199, bottom - 6}, kBorder), bottom - 13);
    EXPECT_EQ(picture.At(1, bottom - 1), GetSysColor(COLOR_BTNFACE)) << "round corner";
    EXPECT_EQ(picture.At(198, bottom - 1), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(picture.Count({199, 0, 200, bottom + 1}, kBorder), 0) << "no frame";
    EXPECT_EQ(box.m_frameRect, CRect(1, bottom, 199, 99)) << "kept for unfolding";
}

TEST_F(CollapsePaintTest, UnfoldedGlyphPointsDown) {
    const Pixels down{{0, 0}, {1, 1}, {2, 2}, {3, 1}, {4, 0}, {0, 1}, {1, 2}, {2, 3}, {3, 2}, {4, 1},
                      {0, 3}, {1, 4}, {2, 5}, {3, 4}, {4, 3}, {0, 4}, {1, 5}, {2, 6}, {3, 5}, {4, 4}};
    BindColoured();
    for (const int alignment : {2, 1}) {
        box.SetAlignment(alignment);
        EXPECT_EQ(box.m_glyphRect, CRect(7, 6, 11, 15));
        EXPECT_EQ(Glyph(Look(), 7, 6), down);
    }
    box.SetAlignment(0);
    EXPECT_EQ(box.m_glyphRect, CRect(186, 6, 190, 15));
    EXPECT_EQ(Glyph(Look(), 186, 6), down);
}

TEST_F(CollapsePaintTest, FoldedGlyphPointsRight) {
    const Pixels right{{0, 1}, {1, 2}, {2, 3}, {1, 4}, {0, 5}, {2, 2}, {3, 3}, {2, 4}, {1, 5}, {1, 1},
                       {3, 1}, {4, 2}, {5, 3}, {4, 4}, {3, 5}, {4, 1}, {5, 2}, {6, 3}, {5, 4}, {4, 5}};
    BindColoured();
    box.SetCollapsed(true);
    for (const int alignment : {2, 1}) {
        box.SetAlignment(alignment);
        EXPECT_EQ(Glyph(Look(), 7, 6), right);
    }
}

TEST_F(CollapsePaintTest, FoldedGlyphPointsLeftBesideALeftTitle) {
    // Measured from the glyph's right edge, 190.
    const Pixels left{{0, 1},  {-1, 2}, {-2, 3}, {-1, 4}, {0, 5},  {-1, 1}, {-2, 2},
                      {-3, 3}, {-2, 4}, {-1, 5}, {-3, 1}, {-4, 2}, {-5, 3}, {-4, 4},
                      {-3, 5}, {-4, 1}, {-5, 2}, {-6, 3}, {-5, 4}, {-4, 5}};
    BindColoured();
    box.SetAlignment(0).SetCollapsed(true);
    const Picture picture = Look();
    Pixels relative;
    for (const auto& [x, y] : Glyph(picture, 186, 6)) {
        relative.emplace(x - 4, y);
    }
    EXPECT_EQ(relative, left);
}

TEST_F(CollapsePaintTest, TitleStandsAtTheLeftInTheMiddleOrAtTheRight) {
    BindColoured();
    box.SetTitle(L"Tool");
    HDC dc = GetDC(box.m_hWnd);
    HGDIOBJ old = SelectObject(dc, box.m_font.GetSafeHandle());
    SIZE extent{};
    GetTextExtentPoint32W(dc, L"Tool", 4, &extent);
    SelectObject(dc, old);
    ReleaseDC(box.m_hWnd, dc);
    box.SetAlignment(0);
    ExpectTitleAt({3, 3, 3 + extent.cx, 3 + extent.cy}, L"Tool");
    box.SetAlignment(1);
    const int middle = 1 + (198 - extent.cx) / 2;
    ExpectTitleAt({middle, 3, middle + extent.cx, 3 + extent.cy}, L"Tool");
    box.SetAlignment(2);
    ExpectTitleAt({197 - extent.cx, 3, 197, 3 + extent.cy}, L"Tool");
}

TEST_F(CollapsePaintTest, TitleHasItsColour) {
    BindColoured();
    box.SetTitleColor(RGB(9, 8, 7));
    EXPECT_GT(Look().Count(box.m_headerRect, RGB(9, 8, 7)), 5);
}

TEST_F(CollapsePaintTest, BoxWithoutTitleHasABarOfFourPixels) {
    BindColoured(L"");
    EXPECT_EQ(box.m_headerRect, CRect(1, 1, 199, 5));
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({10, 1, 190, 2}, kBorder), 180);
}

TEST_F(CollapsePaintTest, WhiteBodyCoversAllButTheEdges) {
    BindColoured();
    box.m_whiteBody = true;
    box.Invalidate();
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({2, 17, 198, 98}, kWhite), 196 * 81);
    EXPECT_EQ(picture.At(1, 50), kBorder);
    EXPECT_EQ(picture.At(100, 98), GetSysColor(COLOR_BTNFACE));
    EXPECT_NE(picture.At(198, 50), kWhite);
    EXPECT_NE(picture.At(100, 16), kWhite);
    box.SetCollapsed(true);
    EXPECT_EQ(Look().At(100, box.m_headerRect.bottom - 1), kBorder) << "a folded box has no body";
}

TEST_F(CollapsePaintTest, FirstPaintRenders) {
    ASSERT_TRUE(box.SubclassWindow(parent.AddGroupBox(kPlace, L"Options")));
    EXPECT_FALSE(box.m_renderedOnce);
    box.Invalidate();
    parent.Paint();
    EXPECT_TRUE(box.m_renderedOnce);
}

TEST_F(CollapsePaintTest, ErasingLeavesThePixelsAlone) {
    BindColoured();
    const Picture before = Look();
    HDC dc = GetDC(box.m_hWnd);
    EXPECT_EQ(SendMessageW(box.m_hWnd, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0), 0);
    ReleaseDC(box.m_hWnd, dc);
    EXPECT_EQ(Picture(box.m_hWnd), before);
}

TEST_F(CollapsePaintTest, FoldingClearsWhatTheBoxLeft) {
    BindColoured();
    const Picture before = Look();
    box.SetCollapsed(true);
    parent.Paint();
    const Picture folded(parent.Window());
    const int bottom = 100 + box.m_headerRect.bottom + 1;
    EXPECT_EQ(folded.Count({20, bottom, 220, 200}, BoxParent::kFace), 200 * (200 - bottom));
    box.SetCollapsed(false);
    EXPECT_EQ(Look(), before);
}

TEST_F(CollapsePaintTest, DrawingKeepsTheNumberOfDrawingObjects) {
    BindWithControl();
    box.SetCollapsed(true).SetCollapsed(false).SetBold(true);
    const int before = GdiObjectCount();
    ASSERT_GT(before, 0);
    for (int i = 0; i < 1000; ++i) {
        box.Invalidate();
        box.UpdateWindow();
        box.SetHeaderColor(static_cast<COLORREF>(i));
    }
    for (int i = 0; i < 100; ++i) {
        box.SetCollapsed(true).SetCollapsed(false).SetBold(true).SetFontSize(9);
    }
    EXPECT_LE(GdiObjectCount(), before);
}

} // namespace
