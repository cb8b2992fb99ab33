#include "document/TextView.h"

#include "PaintedColours.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr int kViewWidth = 300;
constexpr int kViewHeight = 120;

// The view in a window of its own.
class TextViewTest : public testing::Test {
protected:
    TextViewTest()
        : m_frame(CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, kViewWidth, kViewHeight, nullptr,
                                nullptr, nullptr, nullptr)) {
        m_view.Create(m_frame.get(), 1);
        MoveWindow(m_view.Handle(), 0, 0, kViewWidth, kViewHeight, FALSE);
        ShowWindow(m_view.Handle(), SW_SHOWNA);
    }

    void Show(const std::wstring& text) { m_view.Show(MakeLines(text, TextKind::GCode)); }
    [[nodiscard]] int Position(int bar) const { return GetScrollPos(m_view.Handle(), bar); }
    void Press(WPARAM key) const { SendMessageW(m_view.Handle(), WM_KEYDOWN, key, 0); }

    common::UniqueWindow m_frame;
    TextView m_view;
};

std::wstring Lines(int count) {
    std::wstring text;
    for (int i = 0; i < count; ++i) {
        text += L"N" + std::to_wstring(i) + L" G0 X1.0\n";
    }
    return text;
}

} // namespace

TEST_F(TextViewTest, CommentsAndToolsHaveColoursOfTheirOwn) {
    constexpr COLORREF kComment = RGB(0, 128, 0);
    constexpr COLORREF kTool = RGB(176, 48, 0);
    Show(L"G0 X10\nG1 Y20\n");
    std::map<COLORREF, int> colours = CountColours(m_view.Handle());
    EXPECT_FALSE(colours.contains(kComment));
    EXPECT_FALSE(colours.contains(kTool));
    Show(L"(HHHHHHHHHHHHHHHHHH)\nT8888888888 M6\n");
    colours = CountColours(m_view.Handle());
    EXPECT_TRUE(colours.contains(kComment));
    EXPECT_TRUE(colours.contains(kTool));
}

TEST_F(TextViewTest, KeysScrollWithinTheText) {
    Show(Lines(200));
    Press(VK_UP);
    EXPECT_EQ(Position(SB_VERT), 0);
    Press(VK_DOWN);
    EXPECT_EQ(Position(SB_VERT), 1);
    Press(VK_NEXT);
    EXPECT_GT(Position(SB_VERT), 4);
    Press(VK_END);
    const int end = Position(SB_VERT);
    EXPECT_GT(end, 150);
    EXPECT_LT(end, 200);
    Press(VK_DOWN);
    EXPECT_EQ(Position(SB_VERT), end);
    Press(VK_HOME);
    EXPECT_EQ(Position(SB_VERT), 0);
}

TEST_F(TextViewTest, TheWheelScrollsThreeLines) {
    Show(Lines(200));
    SendMessageW(m_view.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Position(SB_VERT), 3);
    SendMessageW(m_view.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(Position(SB_VERT), 0);
}

TEST_F(TextViewTest, LongLinesScrollSideways) {
    Show(std::wstring(500, L'X') + L"\n");
    Press(VK_RIGHT);
    EXPECT_EQ(Position(SB_HORZ), 1);
    CountColours(m_view.Handle());
    Show(L"short\n");
    EXPECT_EQ(Position(SB_HORZ), 0);
    Press(VK_RIGHT);
    EXPECT_EQ(Position(SB_HORZ), 0);
}

TEST_F(TextViewTest, AnotherTextBeginsAtItsTop) {
    Show(Lines(200));
    Press(VK_END);
    Show(Lines(300));
    EXPECT_EQ(Position(SB_VERT), 0);
}

TEST_F(TextViewTest, TheTextIsThereForScreenReaders) {
    Show(L"N10 G0\nN20 G1\n");
    wchar_t text[100] = L"";
    GetWindowTextW(m_view.Handle(), text, ARRAYSIZE(text));
    EXPECT_STREQ(text, L"N10 G0\r\nN20 G1\r\n");
}

TEST_F(TextViewTest, PaintsInAnySize) {
    Show(Lines(50));
    for (const SIZE size : {SIZE{0, 0}, {1, 1}, {10, 200}, {400, 5}}) {
        MoveWindow(m_view.Handle(), 0, 0, size.cx, size.cy, FALSE);
        RedrawWindow(m_view.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_FALSE(GetUpdateRect(m_view.Handle(), nullptr, FALSE));
    }
}
