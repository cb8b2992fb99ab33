#include "TestWindow.h"

#include <gtest/gtest.h>

namespace {

TEST(Button, ChecksAndShowsBitmaps) {
    RecordingWindow parent;
    ASSERT_TRUE(parent.CreateTop());
    CButton button;
    ASSERT_TRUE(button.Create(L"Link", BS_AUTOCHECKBOX | BS_BITMAP, CRect(0, 0, 50, 20), &parent, 3));
    EXPECT_EQ(button.GetDlgCtrlID(), 3);
    EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
    button.SetCheck(BST_CHECKED);
    EXPECT_EQ(button.GetCheck(), BST_CHECKED);
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(3U));
    EXPECT_EQ(button.SetBitmap(bitmap), nullptr);
    EXPECT_EQ(button.GetBitmap(), static_cast<HBITMAP>(bitmap));
    EXPECT_EQ(button.SetBitmap(nullptr), static_cast<HBITMAP>(bitmap));
}

TEST(Static, ShowsBitmaps) {
    RecordingWindow parent;
    ASSERT_TRUE(parent.CreateTop());
    CStatic picture;
    ASSERT_TRUE(picture.Create(L"", SS_BITMAP, CRect(0, 0, 50, 20), &parent));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(3U));
    EXPECT_EQ(picture.SetBitmap(bitmap), nullptr);
    EXPECT_EQ(picture.GetBitmap(), static_cast<HBITMAP>(bitmap));
    EXPECT_EQ(picture.SetBitmap(nullptr), static_cast<HBITMAP>(bitmap));
}

TEST(Static, TakesOverAControlOfAnotherClass) {
    RecordingWindow parent;
    ASSERT_TRUE(parent.CreateTop());
    const HWND group = AddChild(parent, L"BUTTON", 9, BS_GROUPBOX);
    CStatic box;
    ASSERT_TRUE(box.SubclassDlgItem(9, &parent));
    EXPECT_EQ(box.SendMessage(WM_NCHITTEST), HTTRANSPARENT) << "the group box answers below";
    EXPECT_EQ(box.m_hWnd, group);
}

} // namespace
