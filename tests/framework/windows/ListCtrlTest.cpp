#include "TestWindow.h"

#include "afxcmn.h"

#include "GdiObjectCount.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class ListCtrl : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(parent.CreateTop());
        ASSERT_TRUE(
            list.Create(LVS_REPORT | LVS_SINGLESEL | LVS_SHAREIMAGELISTS, CRect(0, 0, 180, 90), &parent, 7));
        EXPECT_EQ(list.InsertColumn(0, L"Name", LVCFMT_LEFT, 150), 0);
        EXPECT_EQ(list.InsertColumn(1, L"Size", LVCFMT_RIGHT, 40, 1), 1);
    }

    RecordingWindow parent;
    CListCtrl list;
};

TEST_F(ListCtrl, HasColumnsAsAsked) {
    wchar_t title[20] = L"";
    LVCOLUMN column = {};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = title;
    column.cchTextMax = 20;
    ASSERT_TRUE(list.GetColumn(1, &column));
    EXPECT_STREQ(title, L"Size");
    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
    EXPECT_EQ(list.InsertColumn(2, L"Date", LVCFMT_LEFT, 40, 7), 2);
    column.mask = LVCF_SUBITEM;
    ASSERT_TRUE(list.GetColumn(2, &column));
    EXPECT_EQ(column.iSubItem, 7);
    EXPECT_EQ(list.GetColumnWidth(0), 150);
    EXPECT_TRUE(list.SetColumnWidth(0, 60));
    EXPECT_EQ(list.GetColumnWidth(0), 60);
}

TEST_F(ListCtrl, InsertsReadsAndDeletesItems) {
    EXPECT_EQ(list.InsertItem(0, L"b.nc", 2), 0);
    EXPECT_EQ(list.InsertItem(0, L"a.nc"), 0);
    EXPECT_TRUE(list.SetItemText(1, 1, L"12 KB"));
    EXPECT_EQ(list.GetItemCount(), 2);
    EXPECT_EQ(list.GetItemText(0, 0), L"a.nc");
    EXPECT_EQ(list.GetItemText(1, 1), L"12 KB");
    EXPECT_TRUE(list.GetItemText(0, 1).IsEmpty());
    wchar_t part[4] = L"";
    EXPECT_EQ(list.GetItemText(1, 0, part, 4), 3);
    EXPECT_STREQ(part, L"b.n");
    LVITEM item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = 1;
    ASSERT_TRUE(list.GetItem(&item));
    EXPECT_EQ(item.iImage, 2);
    EXPECT_TRUE(list.DeleteItem(0));
    EXPECT_FALSE(list.DeleteItem(9));
    EXPECT_EQ(list.GetItemText(0, 0), L"b.nc");
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(list.GetItemCount(), 0);
}

TEST_F(ListCtrl, LongTextsComeWhole) {
    for (const int length : {254, 255, 256, 511, 512, 2000}) {
        const CString text(L'x', length);
        list.DeleteAllItems();
        list.InsertItem(0, text);
        const CString read = list.GetItemText(0, 0);
        // The control may keep less than it was given; what it keeps is read whole.
        std::vector<wchar_t> kept(4000);
        list.GetItemText(0, 0, kept.data(), 4000);
        EXPECT_EQ(read, kept.data()) << length;
    }
}

TEST_F(ListCtrl, TellsTheSelection) {
    for (const wchar_t* name : {L"a", L"b", L"c"}) {
        list.InsertItem(list.GetItemCount(), name);
    }
    EXPECT_EQ(list.GetNextItem(-1, LVNI_SELECTED), -1);
    EXPECT_TRUE(list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED));
    EXPECT_EQ(list.GetItemState(1, LVIS_SELECTED), static_cast<UINT>(LVIS_SELECTED));
    EXPECT_EQ(list.GetNextItem(-1, LVNI_SELECTED), 1);
}

TEST_F(ListCtrl, ExtendedStylesAreSetWhole) {
    EXPECT_EQ(list.SetExtendedStyle(LVS_EX_FULLROWSELECT), 0U);
    EXPECT_EQ(list.SetExtendedStyle(list.GetExtendedStyle() | LVS_EX_GRIDLINES),
              static_cast<DWORD>(LVS_EX_FULLROWSELECT));
    EXPECT_EQ(list.GetExtendedStyle(), static_cast<DWORD>(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES));
}

TEST_F(ListCtrl, SharedImageListsOutliveIt) {
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR8 | ILC_MASK, 8, 1));
    {
        const framework::TemporaryScope call;
        EXPECT_EQ(list.SetImageList(&images, LVSIL_SMALL), nullptr);
        EXPECT_EQ(list.SetImageList(&images, LVSIL_SMALL)->m_hImageList, images.m_hImageList);
    }
    list.DestroyWindow();
    EXPECT_EQ(images.GetImageCount(), 0);
    EXPECT_TRUE(images.DeleteImageList()) << "the list view left it alone";
}

TEST(ImageList, CutsAStripIntoImagesWithAMask) {
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 8, 1));
    CBitmap strip;
    ASSERT_TRUE(strip.LoadBitmap(3U));
    EXPECT_EQ(images.Add(&strip, RGB(255, 255, 255)), 0);
    EXPECT_EQ(images.GetImageCount(), 3);

    CBitmap canvas;
    CDC dc;
    CClientDC screen(nullptr);
    ASSERT_TRUE(dc.CreateCompatibleDC(&screen));
    ASSERT_TRUE(canvas.CreateCompatibleBitmap(&screen, 16, 16));
    dc.SelectObject(&canvas);
    dc.FillSolidRect(0, 0, 16, 16, RGB(200, 200, 200));
    EXPECT_TRUE(images.Draw(&dc, 1, CPoint(0, 0), ILD_NORMAL));
    EXPECT_EQ(dc.GetPixel(8, 8), RGB(0, 255, 0));
    EXPECT_EQ(dc.GetPixel(1, 1), RGB(200, 200, 200)) << "the masked colour is not drawn";
}

TEST(ImageList, OwnsItsHandle) {
    CImageList first;
    ASSERT_TRUE(first.Create(16, 16, ILC_COLOR8 | ILC_MASK, 1, 1));
    EXPECT_FALSE(first.Attach(nullptr));
    const HIMAGELIST handle = first.Detach();
    EXPECT_FALSE(first.DeleteImageList());
    CImageList second;
    EXPECT_TRUE(second.Attach(handle));
    EXPECT_EQ(second.GetSafeHandle(), handle);
    EXPECT_EQ(first.GetImageCount(), 0);

    const int before = GdiObjectCount();
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(second.Create(16, 16, ILC_COLOR8 | ILC_MASK, 1, 1));
    }
    EXPECT_LE(GdiObjectCount(), before + 1);
}

} // namespace
