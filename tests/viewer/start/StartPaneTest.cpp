#include "start/StartPane.h"

#include "mxovpackage.h"
#include "PaintedColours.h"
#include "resources/resource.h"
#include "SystemColours.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace viewer;

namespace {

int StartWidth() {
    return MulDiv(500, GetDpiForSystem(), 96) | 1;
}

int StartHeight() {
    return MulDiv(420, GetDpiForSystem(), 96);
}
constexpr COLORREF kRed = RGB(200, 0, 0);
int g_startCommand = 0;

LRESULT CALLBACK RecordStartCommand(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        g_startCommand = static_cast<int>(wParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// A file of 20 by 20 red pixels.
std::string RedPicture() {
    BITMAPFILEHEADER file = {0x4D42, 54 + 1200, 0, 0, 54};
    BITMAPINFOHEADER info = {sizeof info, 20, 20, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    for (int i = 0; i < 400; ++i) {
        bytes.append("\x00\x00\xC8", 3);
    }
    return bytes;
}

// The same with an alpha channel: the lower half is transparent.
std::string TransparentPicture() {
    BITMAPFILEHEADER file = {0x4D42, sizeof file + sizeof(BITMAPV5HEADER) + 1600, 0, 0,
                             sizeof file + sizeof(BITMAPV5HEADER)};
    BITMAPV5HEADER info = {};
    info.bV5Size = sizeof info;
    info.bV5Width = 20;
    info.bV5Height = 20;
    info.bV5Planes = 1;
    info.bV5BitCount = 32;
    info.bV5Compression = BI_BITFIELDS;
    info.bV5RedMask = 0x00FF0000;
    info.bV5GreenMask = 0x0000FF00;
    info.bV5BlueMask = 0x000000FF;
    info.bV5AlphaMask = 0xFF000000;
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    for (int i = 0; i < 400; ++i) {
        bytes.append(i < 200 ? std::string(4, char{}) : std::string("\x00\x00\xC8\xFF", 4));
    }
    return bytes;
}

// Packs a package with that picture, or with a damaged one.
std::wstring PackWithPicture(const TempFolder& folder, const std::wstring& name, const std::string& picture) {
    folder.Write(name + L"\\mxinfo.ini", "[FILEINFO]\r\nThumbnail=Preview/part.bmp\r\n");
    folder.Write(name + L"\\Preview\\part.bmp", picture);
    std::wstring file = folder / (name + L".mxov");
    EXPECT_TRUE(mxovshare::CreatePackage(folder / name, file).ok);
    return file;
}

// The page in a window of its own.
class StartPaneTest : public testing::Test {
protected:
    StartPaneTest() {
        WNDCLASSW frameClass = {};
        frameClass.lpfnWndProc = RecordStartCommand;
        frameClass.lpszClassName = L"StartPaneTestFrame";
        RegisterClassW(&frameClass);
        m_frame.reset(CreateWindowW(L"StartPaneTestFrame", L"", WS_POPUP | WS_VISIBLE, 0, 0, StartWidth(),
                                    StartHeight(), nullptr, nullptr, nullptr, nullptr));
        m_page.Create(m_frame.get(), 1);
        MoveWindow(m_page.Handle(), 0, 0, StartWidth(), StartHeight(), FALSE);
        g_startCommand = 0;
    }

    [[nodiscard]] HWND List() const { return FindWindowExW(m_page.Handle(), nullptr, WC_LISTVIEWW, nullptr); }
    [[nodiscard]] HWND Button() const { return GetDlgItem(m_page.Handle(), IDM_FILE_OPEN); }

    [[nodiscard]] int ImageOf(int item) const {
        LVITEMW data = {};
        data.mask = LVIF_IMAGE;
        data.iItem = item;
        SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
        return data.iImage;
    }

    // Messages are handled until the picture of an item is there, or the time is over.
    void WaitForPicture(int item) const {
        const ULONGLONG end = GetTickCount64() + 20000;
        while (ImageOf(item) == 0 && GetTickCount64() < end) {
            HandlePending();
        }
    }

    static void HandlePending() {
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        Sleep(5);
    }

    common::UniqueWindow m_frame;
    StartPane m_page;
};

// The first and last column between two rows that differ from the page, which the first pixel shows.
std::pair<int, int> ColumnsOf(HWND window, int top, int bottom) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    RECT area = {};
    GetClientRect(window, &area);
    const HDC dc = GetDC(window);
    const COLORREF page = GetPixel(dc, 0, 0);
    std::pair<int, int> columns = {area.right, -1};
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < area.right; ++x) {
            if (GetPixel(dc, x, y) != page) {
                columns = {std::min(columns.first, x), std::max(columns.second, x)};
            }
        }
    }
    ReleaseDC(window, dc);
    return columns;
}

} // namespace

TEST_F(StartPaneTest, InvitesToOpenAPackage) {
    wchar_t text[200] = L"";
    GetWindowTextW(m_page.Handle(), text, ARRAYSIZE(text));
    EXPECT_NE(std::wstring(text).find(L"Drop a machining package here"), std::wstring::npos);
    EXPECT_GT(CountColours(m_page.Handle(), 3).size(), 1U);
    EXPECT_FALSE(IsWindowVisible(List()));
    SendMessageW(Button(), BM_CLICK, 0, 0);
    HandlePending();
    EXPECT_EQ(g_startCommand, IDM_FILE_OPEN);
}

TEST_F(StartPaneTest, IconInvitationAndButtonAreOnOneAxis) {
    RECT button = {};
    GetWindowRect(Button(), &button);
    MapWindowPoints(nullptr, m_page.Handle(), reinterpret_cast<POINT*>(&button), 2);
    const double axis = static_cast<int>(button.left + button.right) / 2.0;
    EXPECT_NEAR(axis, StartWidth() / 2.0, 1);
    constexpr int kIcon = 48;
    constexpr int kGap = 12;
    const auto invitationTop = [&] {
        int top = 0;
        while (top < button.top && ColumnsOf(m_page.Handle(), top, top + 1).second < 0) {
            ++top;
        }
        return top + kIcon + kGap / 2;
    }();
    const std::pair<int, int> icon = ColumnsOf(m_page.Handle(), 0, invitationTop);
    const std::pair<int, int> text = ColumnsOf(m_page.Handle(), invitationTop, static_cast<int>(button.top));
    ASSERT_GE(icon.second, 0);
    ASSERT_GE(text.second, 0);
    EXPECT_NEAR((icon.first + icon.second) / 2.0, axis, 1);
    EXPECT_NEAR((text.first + text.second) / 2.0, axis, 2);
}

TEST_F(StartPaneTest, RecentPackagesHaveTheirPictures) {
    const TempFolder folder;
    const std::wstring missing = folder / L"missing.mxov";
    m_page.ShowRecent({missing, PackWithPicture(folder, L"damaged", "BM and no more"),
                       PackWithPicture(folder, L"bracket", RedPicture())});
    EXPECT_TRUE(IsWindowVisible(List()));
    EXPECT_EQ(ListView_GetItemCount(List()), 3);
    EXPECT_FALSE(CountColours(List()).contains(kRed));
    WaitForPicture(2);
    EXPECT_EQ(CountColours(List())[kRed], 20 * 20);
    EXPECT_EQ(ImageOf(0), 0);
    EXPECT_EQ(ImageOf(1), 0);
    m_page.ShowRecent({missing});
    EXPECT_EQ(ListView_GetItemCount(List()), 1);
    EXPECT_FALSE(CountColours(List()).contains(kRed));
}

TEST_F(StartPaneTest, APictureWithTransparencyLiesOnItsCard) {
    const TempFolder folder;
    const std::wstring missing = folder / L"missing.mxov";
    m_page.ShowRecent({missing});
    const int card = CountColours(List())[GetSysColor(COLOR_WINDOW)];
    const int edge = CountColours(List())[GetSysColor(COLOR_BTNSHADOW)];
    EXPECT_GT(edge, 4 * 90);
    m_page.ShowRecent({PackWithPicture(folder, L"bracket", TransparentPicture())});
    WaitForPicture(0);
    std::map<COLORREF, int> colours = CountColours(List());
    EXPECT_EQ(colours[kRed], 20 * 10);
    EXPECT_GE(colours[GetSysColor(COLOR_BTNSHADOW)], 4 * 90);
    EXPECT_GT(colours[GetSysColor(COLOR_WINDOW)], card);
}

TEST_F(StartPaneTest, CardsFollowTheColoursOfTheSystem) {
    const TempFolder folder;
    m_page.ShowRecent({PackWithPicture(folder, L"bracket", RedPicture())});
    WaitForPicture(0);
    EXPECT_LT(CountColours(List())[kDarkCard], 1000); // texts have it
    const DarkSystemColours dark;
    SendMessageW(m_page.Handle(), WM_SYSCOLORCHANGE, 0, 0);
    WaitForPicture(0);
    std::map<COLORREF, int> colours = CountColours(List());
    EXPECT_GT(colours[kDarkCard], 90 * 90 - 20 * 20 - 100);
    EXPECT_EQ(colours[kRed], 20 * 20);
}

TEST_F(StartPaneTest, OtherDotsPerInchMakeItsPartsLarger) {
    RECT before = {};
    GetClientRect(Button(), &before);
    m_page.ShowRecent({L"C:\\a.mxov"});
    const int spacing = LOWORD(SendMessageW(List(), LVM_GETITEMSPACING, FALSE, 0));
    const UINT twice = 2 * GetDpiForSystem();
    m_page.ChangeDpi(twice);
    RECT after = {};
    GetClientRect(Button(), &after);
    EXPECT_GT(after.right, before.right * 3 / 2);
    EXPECT_EQ(LOWORD(SendMessageW(List(), LVM_GETITEMSPACING, FALSE, 0)), 2 * spacing);
    IMAGEINFO image = {};
    ASSERT_TRUE(ImageList_GetImageInfo(ListView_GetImageList(List(), LVSIL_NORMAL), 0, &image));
    EXPECT_EQ(image.rcImage.right - image.rcImage.left, twice);
}

TEST_F(StartPaneTest, EnterOpensTheRecentPackage) {
    m_page.ShowRecent({L"C:\\a.mxov", L"C:\\b.mxov"});
    ListView_SetItemState(List(), 1, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    const MSG enter = {List(), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_TRUE(m_page.WantsKey(enter));
    DispatchMessageW(&enter);
    HandlePending();
    EXPECT_EQ(g_startCommand, IDM_RECENT_FIRST + 1);
}

TEST_F(StartPaneTest, PaintsInAnySize) {
    m_page.ShowRecent({L"C:\\a.mxov"});
    for (const SIZE size : {SIZE{0, 0}, {1, 1}, {30, 300}, {300, 30}, {60, 120}}) {
        MoveWindow(m_page.Handle(), 0, 0, size.cx, size.cy, FALSE);
        RedrawWindow(m_page.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_FALSE(GetUpdateRect(m_page.Handle(), nullptr, FALSE));
    }
}
