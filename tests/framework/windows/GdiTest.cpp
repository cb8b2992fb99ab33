#include "afxwin.h"

#include "GdiObjectCount.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

bool Exists(HGDIOBJ object) {
    return ::GetObjectType(object) != 0;
}

static_assert(!std::is_copy_constructible_v<CPen> && !std::is_move_constructible_v<CPen>);
static_assert(!std::is_copy_assignable_v<CBitmap> && !std::is_move_assignable_v<CBitmap>);

TEST(GdiObject, DeletesItsHandleWhenItDies) {
    HGDIOBJ handle = nullptr;
    {
        const CPen pen(PS_SOLID, 1, RGB(1, 2, 3));
        handle = pen.m_hObject;
        EXPECT_TRUE(Exists(handle));
    }
    EXPECT_FALSE(Exists(handle));
}

TEST(GdiObject, AttachTakesAndDetachGives) {
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.Attach(nullptr));
    const HBITMAP handle = ::CreateBitmap(4, 4, 1, 32, nullptr);
    EXPECT_TRUE(bitmap.Attach(handle));
    EXPECT_FALSE(bitmap.Attach(::GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(bitmap.Detach(), handle);
    EXPECT_FALSE(bitmap.DeleteObject());
    EXPECT_TRUE(::DeleteObject(handle));
}

TEST(GdiObject, CreatingAgainReplacesTheHandle) {
    CPen pen;
    ASSERT_TRUE(pen.CreatePen(PS_SOLID, 1, RGB(0, 0, 0)));
    const int before = GdiObjectCount();
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(pen.CreatePen(PS_SOLID, 1, RGB(i, 0, 0)));
    }
    EXPECT_LE(GdiObjectCount(), before + 1);
}

TEST(GdiObject, ATemporaryObjectOwnsNothing) {
    const HPEN handle = ::CreatePen(PS_SOLID, 1, 0);
    {
        const framework::TemporaryScope call;
        EXPECT_EQ(CPen::FromHandle(handle)->m_hObject, handle);
    }
    EXPECT_TRUE(Exists(handle));
    ::DeleteObject(handle);
}

TEST(Font, IsDescribedAsItWasMade) {
    CFont font;
    ASSERT_TRUE(
        font.CreateFont(13, 6, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, 0, 0, 0, 0, FF_SWISS, L"MS Shell Dlg 2"));
    LOGFONT description = {};
    ASSERT_NE(font.GetLogFont(&description), 0);
    EXPECT_EQ(description.lfHeight, 13);
    EXPECT_EQ(description.lfWidth, 6);
    EXPECT_EQ(description.lfWeight, FW_BOLD);
    EXPECT_EQ(description.lfPitchAndFamily, FF_SWISS);
    EXPECT_STREQ(description.lfFaceName, L"MS Shell Dlg 2");
    description.lfItalic = TRUE;
    ASSERT_TRUE(font.CreateFontIndirect(&description));
    font.GetLogFont(&description);
    EXPECT_EQ(description.lfItalic, TRUE);
}

TEST(Font, PointSizesFollowTheDevice) {
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(100, L"Tahoma"));
    LOGFONT description = {};
    font.GetLogFont(&description);
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(description.lfHeight, -::MulDiv(::GetDeviceCaps(screen, LOGPIXELSY), 10, 72));
    ::ReleaseDC(nullptr, screen);
    EXPECT_STREQ(description.lfFaceName, L"Tahoma");
    ASSERT_TRUE(font.CreatePointFont(90, CString(L'n', 60))) << "a name that does not fit is cut";
    font.GetLogFont(&description);
    EXPECT_EQ(CString(description.lfFaceName).GetLength(), LF_FACESIZE - 1);
}

TEST(Bitmap, LoadsFromTheResourceModule) {
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(3U));
    BITMAP description = {};
    ASSERT_NE(bitmap.GetBitmap(&description), 0);
    EXPECT_EQ(description.bmWidth, 48);
    EXPECT_EQ(description.bmHeight, 16);
    EXPECT_FALSE(bitmap.LoadBitmap(999U));
    EXPECT_EQ(bitmap.m_hObject, nullptr) << "the old one is gone";
}

} // namespace
