#include "preview/PreviewPane.h"

#include "PaintedColours.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr int kWidth = 420;
constexpr int kHeight = 360;

// The pane in a window of its own, painted into a bitmap.
class PreviewPaneTest : public testing::Test {
protected:
    PreviewPaneTest()
        : m_frame(CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                                nullptr, nullptr, nullptr)) {
        m_pane.Create(m_frame, 1);
        MoveWindow(m_pane.Handle(), 0, 0, kWidth, kHeight, FALSE);
        ShowWindow(m_pane.Handle(), SW_SHOWNA);
    }
    ~PreviewPaneTest() override { DestroyWindow(m_frame); }

    [[nodiscard]] std::map<COLORREF, int> Colours() const { return CountColours(m_pane.Handle(), 3); }

    [[nodiscard]] std::wstring Text() const {
        wchar_t text[500] = L"";
        GetWindowTextW(m_pane.Handle(), text, ARRAYSIZE(text));
        return text;
    }

    HWND m_frame;
    PreviewPane m_pane;
};

// A file of 20 by 20 green pixels.
std::wstring WriteGreenPicture(const TempFolder& folder) {
    BITMAPFILEHEADER file = {0x4D42, 54 + 1200, 0, 0, 54};
    BITMAPINFOHEADER info = {sizeof info, 20, 20, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    for (int i = 0; i < 400; ++i) {
        bytes.append("\x00\xC8\x00", 3);
    }
    return folder.Write(L"green.bmp", bytes);
}

constexpr COLORREF kGreen = RGB(0, 200, 0);

} // namespace

TEST_F(PreviewPaneTest, ShowsNameVersionAndPicture) {
    const TempFolder folder;
    m_pane.Show({L"bracket", L"Package Writer 2024", WriteGreenPicture(folder), L"Saved"});
    EXPECT_EQ(Text(), L"bracket\nPackage Writer 2024\nSaved");
    EXPECT_TRUE(Colours().contains(kGreen));
}

TEST_F(PreviewPaneTest, APictureIsNotEnlarged) {
    const TempFolder folder;
    m_pane.Show({L"bracket", L"", WriteGreenPicture(folder), L""});
    EXPECT_EQ(CountColours(m_pane.Handle())[kGreen], 20 * 20);
}

TEST_F(PreviewPaneTest, SaysThatThereIsNoPicture) {
    const TempFolder folder;
    for (const std::wstring& file : {std::wstring(), folder.Write(L"damaged.bmp", "BM and no more")}) {
        m_pane.Show({L"bracket", L"", file, L""});
        EXPECT_NE(Text().find(L"no preview picture"), std::wstring::npos);
        EXPECT_FALSE(Colours().contains(kGreen));
    }
}

TEST_F(PreviewPaneTest, ClearingItForgetsThePicture) {
    const TempFolder folder;
    m_pane.Show({L"bracket", L"", WriteGreenPicture(folder), L""});
    m_pane.Clear();
    EXPECT_FALSE(Colours().contains(kGreen));
    EXPECT_EQ(Text(), L"Picture");
}

TEST_F(PreviewPaneTest, PaintsInAnySize) {
    const TempFolder folder;
    m_pane.Show({L"bracket", L"Package Writer 2024", WriteGreenPicture(folder), L"Saved"});
    for (const SIZE size : {SIZE{0, 0}, {1, 1}, {30, 300}, {300, 30}, {60, 120}}) {
        MoveWindow(m_pane.Handle(), 0, 0, size.cx, size.cy, FALSE);
        RedrawWindow(m_pane.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_FALSE(GetUpdateRect(m_pane.Handle(), nullptr, FALSE));
    }
}
