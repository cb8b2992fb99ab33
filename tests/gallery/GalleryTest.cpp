// The gallery as a person uses it: a program of its own, the system's mouse, and what is on the screen.
#include "common/Paths.h"
#include "Process.h"
#include "RealMouse.h"
#include "resource.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

constexpr DWORD kPatience = 15000; // milliseconds
constexpr int kFoldedSection = 30;
constexpr POINT kOnHeader{60, 8}; // beside title and glyph
constexpr COLORREF kCopper = RGB(184, 115, 51);

/// Waits for what another program does; false when it does not happen.
bool Eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (!condition()) {
        if (GetTickCount64() >= end) {
            return false;
        }
        Sleep(5);
    }
    return true;
}

std::wstring GalleryPath() {
    return common::ModuleFolder(nullptr) + L"\\gallery.exe";
}

HWND FindDescendant(HWND window, int identifier) {
    struct Search {
        int identifier;
        HWND found;
    } search{identifier, nullptr};
    EnumChildWindows(
        window,
        [](HWND child, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            if (GetDlgCtrlID(child) == wanted.identifier) {
                wanted.found = child;
            }
            return wanted.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

RECT ScreenRect(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

LONG HeightOf(HWND window) {
    const RECT rect = ScreenRect(window);
    return rect.bottom - rect.top;
}

LONG TopOf(HWND window) {
    return ScreenRect(window).top;
}

/// What the screen shows at a point of a window.
COLORREF PixelOf(HWND window, POINT client) {
    ClientToScreen(window, &client);
    HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, client.x, client.y);
    ReleaseDC(nullptr, screen);
    return colour;
}

class GalleryTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_process);
        ASSERT_TRUE(Eventually([this] { return FindGallery(); }));
        // Shown: its window and the last of its boxes are on the screen.
        ASSERT_TRUE(Eventually([this] { return PixelOf(Control(IDC_FEEDS_BOX), kOnHeader) == m_normal; }));
    }

    void TearDown() override {
        PostMessageW(m_gallery, WM_CLOSE, 0, 0);
        if (!m_process.EndsWithin(kPatience)) {
            ADD_FAILURE() << "the gallery does not close";
            m_process.Terminate(1);
        }
        EXPECT_EQ(m_process.Wait(), 0u);
    }

    HWND Control(int identifier) const { return FindDescendant(m_gallery, identifier); }

    bool Shows(int identifier) const { return IsWindowVisible(Control(identifier)) != FALSE; }

    /// The window that holds the mouse in the gallery.
    HWND MouseHolder() const {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(m_gallery, nullptr), &info);
        return info.hwndCapture;
    }

    /// The lines of the record.
    std::vector<std::wstring> Events() const {
        std::vector<std::wstring> lines;
        HWND list = Control(IDC_EVENTS);
        const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
        for (LRESULT i = 0; i < count; ++i) {
            std::wstring line(
                static_cast<size_t>(SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0)), L'\0');
            SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(line.data()));
            lines.push_back(line);
        }
        return lines;
    }

    /// A click that is no second half of a double click, wherever the pointer is when it arrives.
    void ClickOn(int identifier, POINT client) {
        const ULONGLONG now = GetTickCount64();
        if (now < m_nextClick) {
            Sleep(static_cast<DWORD>(m_nextClick - now));
        }
        m_nextClick = GetTickCount64() + 2ULL * GetDoubleClickTime();
        m_mouse.MoveTo(Control(identifier), client);
        m_mouse.Click();
    }

    RealMouse m_mouse;
    ULONGLONG m_nextClick = 0; // milliseconds since the system started
    const COLORREF m_normal = GetSysColor(COLOR_INACTIVECAPTION);
    const COLORREF m_hot = GetSysColor(COLOR_ACTIVECAPTION);

private:
    bool FindGallery() {
        m_gallery = FindWindowW(nullptr, L"Group boxes");
        DWORD process = 0;
        GetWindowThreadProcessId(m_gallery, &process);
        return process == m_process.Id() && IsWindowVisible(m_gallery);
    }

    Process m_process{L'"' + GalleryPath() + L'"'};
    HWND m_gallery = nullptr;
};

TEST_F(GalleryTest, MouseFoldsAndUnfoldsASection) {
    HWND operations = Control(IDC_OPERATIONS_BOX);
    HWND tools = Control(IDC_TOOLS_BOX);
    const LONG height = HeightOf(operations);
    const LONG toolsTop = TopOf(tools);
    ASSERT_GT(height, kFoldedSection);

    ClickOn(IDC_OPERATIONS_BOX, {100, 10});
    ASSERT_TRUE(Eventually([&] { return HeightOf(operations) == kFoldedSection; }));
    EXPECT_TRUE(Eventually([&] { return TopOf(tools) == toolsTop - (height - kFoldedSection); }));
    EXPECT_FALSE(Shows(IDC_SHOW_TOOLS));
    EXPECT_TRUE(Shows(IDC_TOOLS));

    ClickOn(IDC_OPERATIONS_BOX, {200, 5});
    ASSERT_TRUE(Eventually([&] { return HeightOf(operations) == height; }));
    EXPECT_EQ(TopOf(tools), toolsTop);
    EXPECT_TRUE(Eventually([&] { return Shows(IDC_SHOW_TOOLS); }));
}

TEST_F(GalleryTest, SectionIsHiddenShownAndMadeTaller) {
    HWND notes = Control(IDC_NOTES_BOX);
    const LONG top = TopOf(notes);
    const LONG gap = HeightOf(Control(IDC_TOOLS_BOX)) + 10;
    ClickOn(IDC_SHOW_TOOLS, {5, 5});
    ASSERT_TRUE(Eventually([&] { return !Shows(IDC_TOOLS_BOX) && TopOf(notes) == top - gap; }));
    EXPECT_FALSE(Shows(IDC_TOOLS));
    ClickOn(IDC_SHOW_TOOLS, {5, 5});
    ASSERT_TRUE(Eventually([&] { return Shows(IDC_TOOLS_BOX) && TopOf(notes) == top; }));

    const LONG height = HeightOf(notes);
    ClickOn(IDC_TALLER, {10, 10});
    EXPECT_TRUE(Eventually([&] { return HeightOf(notes) == height + 20; }));
}

TEST_F(GalleryTest, TitleBarLightsUpUnderTheMouse) {
    HWND box = Control(IDC_COLOURS_BOX);
    m_mouse.MoveTo(box, kOnHeader);
    EXPECT_TRUE(Eventually([&] { return PixelOf(box, kOnHeader) == m_hot; }));
    EXPECT_TRUE(Eventually([&] { return MouseHolder() == box; }));
    EXPECT_EQ(Events(), (std::vector<std::wstring>{L"Colours: the mouse is over the title bar"}));

    m_mouse.MoveTo(box, {60, MulDiv(25, GetDpiForSystem(), 96)});
    EXPECT_TRUE(Eventually([&] { return PixelOf(box, kOnHeader) == m_normal; }));
    EXPECT_TRUE(Eventually([&] { return MouseHolder() == nullptr; }));
    EXPECT_EQ(Events(), (std::vector<std::wstring>{L"Colours: the mouse is over the title bar",
                                                   L"Colours: the mouse has left the title bar"}));
}

TEST_F(GalleryTest, MouseFoldsAndUnfoldsABoxAndTheParentMovesTheRest) {
    HWND title = Control(IDC_TITLE_BOX);
    HWND colours = Control(IDC_COLOURS_BOX);
    HWND copper = Control(IDC_COPPER);
    const LONG height = HeightOf(title);
    const LONG coloursTop = TopOf(colours);
    const LONG copperTop = TopOf(copper);

    ClickOn(IDC_TITLE_BOX, kOnHeader);
    ASSERT_TRUE(Eventually([&] { return HeightOf(title) < 30; }));
    const LONG saved = height - HeightOf(title);
    EXPECT_TRUE(Eventually([&] { return TopOf(colours) == coloursTop - saved; }));
    EXPECT_TRUE(Eventually([&] { return TopOf(copper) == copperTop - saved; }));
    EXPECT_FALSE(Shows(IDC_BOLD));
    EXPECT_FALSE(IsWindowEnabled(Control(IDC_BOLD)));
    EXPECT_TRUE(Eventually([&] { return PixelOf(colours, kOnHeader) == m_normal; })) << "it is painted there";

    ClickOn(IDC_TITLE_BOX, {120, 8});
    ASSERT_TRUE(Eventually([&] { return HeightOf(title) == height; }));
    EXPECT_TRUE(Eventually([&] { return TopOf(colours) == coloursTop && TopOf(copper) == copperTop; }));
    EXPECT_TRUE(Eventually([&] { return Shows(IDC_BOLD) && IsWindowEnabled(Control(IDC_BOLD)); }));
}

TEST_F(GalleryTest, ControlsInABoxTakeTheMouse) {
    ClickOn(IDC_COPPER, {10, 10});
    for (const int box : {IDC_TITLE_BOX, IDC_COLOURS_BOX, IDC_FEEDS_BOX}) {
        EXPECT_TRUE(Eventually([&] { return PixelOf(Control(box), kOnHeader) == kCopper; }));
    }
    ClickOn(IDC_TITLE_LEFT, {5, 5});
    EXPECT_TRUE(
        Eventually([&] { return SendMessageW(Control(IDC_TITLE_LEFT), BM_GETCHECK, 0, 0) == BST_CHECKED; }));
    HWND feeds = Control(IDC_FEEDS_BOX);
    const RECT place = ScreenRect(feeds);
    const POINT glyph{place.right - place.left - 14, 6};
    EXPECT_TRUE(Eventually([&] { return PixelOf(feeds, glyph) == GetSysColor(COLOR_CAPTIONTEXT); }))
        << "the glyph makes room for the title at the left";
}

TEST_F(GalleryTest, AllBoxesFoldAndUnfoldFromCode) {
    const LONG top = TopOf(Control(IDC_FOLD_ALL));
    ClickOn(IDC_FOLD_ALL, {10, 10});
    for (const int box : {IDC_TITLE_BOX, IDC_COLOURS_BOX, IDC_FEEDS_BOX}) {
        EXPECT_TRUE(Eventually([&] { return HeightOf(Control(box)) < 30; }));
    }
    EXPECT_TRUE(Eventually([&] { return TopOf(Control(IDC_FOLD_ALL)) < top - 100; }));
    ClickOn(IDC_UNFOLD_ALL, {10, 10});
    EXPECT_TRUE(Eventually([&] { return TopOf(Control(IDC_FOLD_ALL)) == top; }));
    EXPECT_TRUE(Eventually([&] { return Shows(IDC_SPINDLE) && Shows(IDC_COPPER) && Shows(IDC_BOLD); }));
    EXPECT_EQ(Events().size(), 6u);
}

} // namespace
