// What a section shows.
#include "GdiObjectCount.h"
#include "mxovshare.h"
#include "Picture.h"
#include "SectionBox.h"

namespace {

constexpr COLORREF kLine = RGB(144, 146, 161);
constexpr COLORREF kGrey = RGB(159, 159, 159);
constexpr COLORREF kTitle = RGB(0, 102, 178);
constexpr WORD kExpandedIcon = 146;
constexpr WORD kCollapsedIcon = 147;

class SectionPaintTest : public SectionBoxTest {
protected:
    void SetUp() override {
        LOGFONTW font{};
        ASSERT_NE(GetObjectW(box.m_titleFont.GetSafeHandle(), sizeof font, &font), 0);
        font.lfQuality = Picture::kTextQuality;
        ASSERT_TRUE(box.m_titleFont.DeleteObject());
        ASSERT_TRUE(box.m_titleFont.CreateFontIndirect(&font));
    }

    /// The section as it looks when nothing is left to paint.
    Picture Look() const {
        parent.Paint();
        return Picture(box.m_hWnd);
    }

    /// Has the section painted anew on an erased parent.
    void Repaint() const {
        RedrawWindow(parent.Window(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }

    /// How many pixels of the icon's place differ from the icon drawn on a plain ground.
    static int Differences(const Picture& picture, const CRect& place, WORD icon, COLORREF ground);
};

int SectionPaintTest::Differences(const Picture& picture, const CRect& place, WORD icon, COLORREF ground) {
    BoxParent canvas;
    HDC dc = GetDC(canvas.Window());
    const CRect square(0, 0, 16, 16);
    CBrush brush(ground);
    FillRect(dc, square, brush);
    HICON handle = static_cast<HICON>(LoadImageW(mxovshare::OVApplication::hMXOVResInstance,
                                                 MAKEINTRESOURCEW(icon), IMAGE_ICON, 16, 16, 0));
    EXPECT_NE(handle, nullptr);
    DrawIconEx(dc, 0, 0, handle, 16, 16, 0, nullptr, DI_NORMAL);
    DestroyIcon(handle);
    ReleaseDC(canvas.Window(), dc);
    const Picture expected(canvas.Window());
    int differences = 0;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            differences += picture.At(place.left + x, place.top + y) != expected.At(x, y) ? 1 : 0;
        }
    }
    return differences;
}

TEST_F(SectionPaintTest, LineRunsAlongTheTopEdgeOnly) {
    Bind();
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({0, 0, 300, 1}, kLine), 300);
    EXPECT_EQ(picture.Count({0, 1, 300, 150}, kLine), 0);
    EXPECT_EQ(picture.Count({0, 20, 300, 150}, BoxParent::kFace), 300 * 130) << "the body shows the parent";
}

TEST_F(SectionPaintTest, LineBeginsAtTheCornerWhereverTheLastOneEnded) {
    WNDCLASSW kind = {};
    ASSERT_TRUE(GetClassInfoW(nullptr, L"Button", &kind));
    kind.style = (kind.style & ~static_cast<UINT>(CS_PARENTDC)) | CS_OWNDC; // keeps the place of its pen
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"OwnDcButton";
    ASSERT_TRUE(RegisterClassW(&kind));
    const HWND window =
        CreateWindowExW(0, kind.lpszClassName, L"", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, kPlace.left,
                        kPlace.top, kPlace.right - kPlace.left, kPlace.bottom - kPlace.top, parent.Window(),
                        nullptr, kind.hInstance, nullptr);
    ASSERT_TRUE(box.SubclassWindow(window));
    const HDC dc = GetDC(window);
    MoveToEx(dc, 100, 50, nullptr);
    ReleaseDC(window, dc);
    EXPECT_EQ(Look().Count({0, 0, 300, 1}, kLine), 300);
    box.DestroyWindow();
    UnregisterClassW(kind.lpszClassName, kind.hInstance);
}

TEST_F(SectionPaintTest, TitleIsWrittenInItsColourOnWhite) {
    Bind();
    const Picture picture = Look();
    const CRect cell(5, 2, 200, 15);
    EXPECT_GT(picture.Count(cell, kTitle), 10);
    EXPECT_GT(picture.Count(cell, kWhite), 50) << "the text has an opaque ground";
    EXPECT_EQ(picture.At(5, 2), kWhite) << "the text begins here";
    EXPECT_EQ(picture.At(4, 2), BoxParent::kFace);
    EXPECT_EQ(picture.At(5, 1), BoxParent::kFace);
    EXPECT_EQ(picture.At(5, 14), kWhite) << "13 pixels high";
    EXPECT_EQ(picture.At(5, 15), BoxParent::kFace);
}

TEST_F(SectionPaintTest, TitleKeepsItsColourWithoutTheFlag) {
    Bind();
    const Picture before = Look();
    box.m_useTitleColour = 0;
    Repaint();
    EXPECT_EQ(Look(), before);
}

TEST_F(SectionPaintTest, TitleFollowsTheWindowText) {
    Bind();
    const Picture before = Look();
    box.SetWindowText(L"Setup Sheets");
    Repaint();
    EXPECT_NE(Look(), before);
}

TEST_F(SectionPaintTest, IconShowsTheState) {
    BindWithControls();
    EXPECT_EQ(Differences(Look(), box.GetIconRect(), kExpandedIcon, BoxParent::kFace), 0);
    EXPECT_GT(Differences(Look(), box.GetIconRect(), kCollapsedIcon, BoxParent::kFace), 0);
    box.Toggle();
    EXPECT_EQ(Differences(Look(), box.GetIconRect(), kCollapsedIcon, BoxParent::kFace), 0);
    box.Toggle();
    EXPECT_EQ(Differences(Look(), box.GetIconRect(), kExpandedIcon, BoxParent::kFace), 0);
}

TEST_F(SectionPaintTest, FoldedBoxShowsItsHeaderAndNothingBelow) {
    BindWithControls();
    const Picture unfolded = Look();
    box.Toggle();
    const Picture folded = Look();
    ASSERT_EQ(folded.Height(), 30);
    EXPECT_EQ(folded.Count({0, 0, 300, 1}, kLine), 300);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 280; ++x) {
            ASSERT_EQ(folded.At(x, y), unfolded.At(x, y)) << x << ", " << y;
        }
    }
    EXPECT_EQ(folded.Count({0, 20, 300, 30}, BoxParent::kFace), 300 * 10);
    const Picture whole(parent.Window());
    EXPECT_EQ(whole.Count({20, 130, 320, 180}, BoxParent::kFace), 300 * 50) << "nothing is left behind";
}

TEST_F(SectionPaintTest, DisabledHeaderIsGrey) {
    Bind();
    box.EnableSection(false);
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({0, 0, 300, 1}, kLine), 300);
    EXPECT_EQ(picture.Count({150, 1, 280, 20}, kGrey), 130 * 19);
    EXPECT_EQ(picture.Count({0, 20, 300, 150}, kGrey), 0);
    EXPECT_GT(picture.Count({5, 2, 200, 15}, kTitle), 10);
    EXPECT_EQ(Differences(picture, box.GetIconRect(), kExpandedIcon, kGrey), 0);
}

TEST_F(SectionPaintTest, EnablingTakesTheGreyAway) {
    Bind();
    const Picture before = Look();
    box.EnableSection(false);
    Repaint();
    box.EnableSection(true);
    Repaint();
    EXPECT_EQ(Look(), before);
}

TEST_F(SectionPaintTest, BoxThatCannotFoldLooksLikeThePlainGroupBox) {
    HWND plain = parent.AddGroupBox(kPlace, L"G Code");
    parent.Paint();
    const Picture expected(plain);
    DestroyWindow(plain);
    parent.Paint();
    box.m_collapsible = 0;
    Bind();
    EXPECT_EQ(Look(), expected);
}

TEST_F(SectionPaintTest, CustomPaintAloneDrawsNoIcon) {
    box.m_collapsible = 0;
    box.m_customPaint = 1;
    Bind();
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({0, 0, 300, 1}, kLine), 300);
    EXPECT_GT(picture.Count({5, 2, 200, 15}, kTitle), 10);
    EXPECT_EQ(picture.Count(box.GetIconRect(), BoxParent::kFace), 16 * 16);
}

TEST_F(SectionPaintTest, IconNeedsTheFlagToBeExactlyOne) {
    box.m_collapsible = 2;
    Bind();
    const Picture picture = Look();
    EXPECT_EQ(picture.Count({0, 0, 300, 1}, kLine), 300);
    EXPECT_EQ(picture.Count(box.GetIconRect(), BoxParent::kFace), 16 * 16);
}

TEST_F(SectionPaintTest, MissingIconIsLeftOut) {
    Bind();
    HINSTANCE resources = mxovshare::OVApplication::hMXOVResInstance;
    mxovshare::OVApplication::hMXOVResInstance = GetModuleHandleW(nullptr); // has no such icon
    const Picture picture = Look();
    mxovshare::OVApplication::hMXOVResInstance = resources;
    EXPECT_EQ(picture.Count(box.GetIconRect(), BoxParent::kFace), 16 * 16);
    EXPECT_EQ(picture.Count({0, 0, 300, 1}, kLine), 300);
}

TEST_F(SectionPaintTest, TitleLiesOverTheGreyHeader) {
    Bind();
    box.EnableSection(false);
    const Picture picture = Look();
    const CRect header = box.GetHeaderRect();
    EXPECT_GT(picture.Count(header, kTitle), 0);
    EXPECT_GT(picture.Count(header, kWhite), 0) << "the ground of the title";
    EXPECT_GT(picture.Count(header, kGrey), 0);
}

TEST_F(SectionPaintTest, IconLiesOverALongTitle) {
    Bind();
    box.SetWindowText(L"G Code" + CString(L' ', 200));
    const Picture picture = Look();
    const CRect icon = box.GetIconRect();
    const int ground = picture.Count(icon, kWhite);
    EXPECT_GT(ground, 0) << "the title reaches as far as that";
    EXPECT_LT(ground + picture.Count(icon, BoxParent::kFace), icon.Width() * icon.Height());
}

TEST_F(SectionPaintTest, TitleIsWholeAfterAPartOfTheBoxWasPainted) {
    Bind();
    const Picture whole = Look();
    const CRect title(5, 2, 200, 15);
    ASSERT_GT(whole.Count(title, kTitle), 10);
    // Nothing of it is left from before.
    HDC dc = GetDC(box.m_hWnd);
    CBrush brush(BoxParent::kFace);
    FillRect(dc, title, brush);
    ReleaseDC(box.m_hWnd, dc);
    ASSERT_EQ(Picture(box.m_hWnd).Count(title, kTitle), 0);
    const CRect part(20, 0, 30, 20);
    RedrawWindow(box.m_hWnd, part, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const Picture again(box.m_hWnd);
    for (int y = title.top; y < title.bottom; ++y) {
        for (int x = title.left; x < title.right; ++x) {
            ASSERT_EQ(again.At(x, y), whole.At(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(SectionPaintTest, PaintingKeepsTheNumberOfDrawingObjects) {
    BindWithControls();
    box.EnableSection(false);
    parent.Paint();
    const int before = GdiObjectCount();
    ASSERT_GT(before, 0);
    for (int i = 0; i < 1000; ++i) {
        box.Invalidate();
        box.UpdateWindow();
    }
    EXPECT_LE(GdiObjectCount(), before);
}

} // namespace
