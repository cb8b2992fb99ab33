#include "compare/TextPairPane.h"

#include "PaintedColours.h"
#include "window/Palette.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr int kPairWidth = 600;
constexpr int kPairHeight = 220;

std::wstring NumberedLines(int count, std::initializer_list<int> changed) {
    std::wstring text;
    for (int i = 0; i < count; ++i) {
        const bool isChanged = std::ranges::find(changed, i) != changed.end();
        text += (isChanged ? L"changed " : L"line ") + std::to_wstring(i) + L"\n";
    }
    return text;
}

// The pane in a window of its own, with texts of 200 lines that differ in some.
class TextPairPaneTest : public testing::Test {
protected:
    TextPairPaneTest()
        : m_frame(CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, kPairWidth, kPairHeight, nullptr,
                                nullptr, nullptr, nullptr)) {
        m_pane.Create(m_frame.get(), 1, L"old.mxov", L"Open now");
        MoveWindow(m_pane.Handle(), 0, 0, kPairWidth, kPairHeight, FALSE);
    }

    void ShowChanged(std::initializer_list<int> changed) {
        m_pane.Show(
            ArrangeTexts({.before = NumberedLines(200, {}), .after = NumberedLines(200, changed)}, true));
    }

    // Of both texts, which are scrolled alike.
    [[nodiscard]] int Line() const {
        EXPECT_EQ(m_pane.Before().Place().y, m_pane.After().Place().y);
        EXPECT_EQ(m_pane.Before().Place().x, m_pane.After().Place().x);
        return m_pane.Before().Place().y;
    }

    common::UniqueWindow m_frame;
    TextPairPane m_pane;
};

} // namespace

TEST_F(TextPairPaneTest, BeginsWithTheFirstDifference) {
    ShowChanged({100, 150});
    EXPECT_EQ(m_pane.DifferenceCount(), 2u);
    EXPECT_EQ(m_pane.Current(), 0u);
    EXPECT_GT(Line(), 85);
    EXPECT_LE(Line(), 100);
}

TEST_F(TextPairPaneTest, GoesFromDifferenceToDifferenceAndRound) {
    ShowChanged({50, 100, 150});
    const int first = Line();
    m_pane.ShowNext();
    EXPECT_EQ(m_pane.Current(), 1u);
    EXPECT_EQ(Line(), first + 50);
    m_pane.ShowNext();
    m_pane.ShowNext();
    EXPECT_EQ(m_pane.Current(), 0u);
    EXPECT_EQ(Line(), first);
    m_pane.ShowPrevious();
    EXPECT_EQ(m_pane.Current(), 2u);
    EXPECT_EQ(Line(), first + 100);
}

TEST_F(TextPairPaneTest, EitherTextScrollsBoth) {
    ShowChanged({0});
    SendMessageW(m_pane.After().Handle(), WM_KEYDOWN, VK_END, 0);
    EXPECT_GT(Line(), 150);
    SendMessageW(m_pane.Before().Handle(), WM_KEYDOWN, VK_HOME, 0);
    EXPECT_EQ(Line(), 0);
    SendMessageW(m_pane.Before().Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Line(), 3);
}

TEST_F(TextPairPaneTest, BothScrollSidewaysAsFarAsTheLongerLine) {
    m_pane.Show(ArrangeTexts({.before = L"short\n", .after = std::wstring(300, L'X') + L"\n"}, true));
    SendMessageW(m_pane.Before().Handle(), WM_KEYDOWN, VK_RIGHT, 0);
    EXPECT_EQ(m_pane.After().Place().x, 1);
    EXPECT_EQ(Line(), 0);
}

TEST_F(TextPairPaneTest, WithoutDifferencesNothingMoves) {
    ShowChanged({});
    m_pane.ShowNext();
    m_pane.ShowPrevious();
    EXPECT_EQ(m_pane.DifferenceCount(), 0u);
    EXPECT_EQ(Line(), 0);
}

TEST_F(TextPairPaneTest, LinesThatDifferAreTintedAndFramed) {
    const Palette palette = CurrentPalette();
    m_pane.Show(ArrangeTexts({.before = L"a\nb\n", .after = L"a\nb\n"}, true));
    std::map<COLORREF, int> colours = CountColours(m_pane.After().Handle());
    for (const COLORREF tint : {palette.changed, palette.added, palette.frame}) {
        EXPECT_FALSE(colours.contains(tint)) << tint;
    }
    m_pane.Show(ArrangeTexts({.before = L"a\nb\n\n", .after = L"a\nX\n\nY\n"}, true));
    colours = CountColours(m_pane.After().Handle());
    for (const COLORREF tint : {palette.changed, palette.added, palette.frame}) {
        EXPECT_GT(colours[tint], 100) << tint;
    }
    EXPECT_FALSE(CountColours(m_pane.Before().Handle()).contains(palette.added));
    m_pane.Show(ArrangeTexts({.before = L"a\nb\n", .after = L"a\n"}, true));
    EXPECT_GT(CountColours(m_pane.Before().Handle())[palette.removed], 100);
    EXPECT_FALSE(CountColours(m_pane.After().Handle()).contains(palette.removed));
}

TEST_F(TextPairPaneTest, TheTextsStandBesideEachOtherInAnySize) {
    ShowChanged({1});
    for (const SIZE size : {SIZE{0, 0}, {3, 3}, {500, 40}, {kPairWidth, kPairHeight}}) {
        MoveWindow(m_pane.Handle(), 0, 0, size.cx, size.cy, FALSE);
        RedrawWindow(m_pane.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        EXPECT_FALSE(GetUpdateRect(m_pane.Handle(), nullptr, FALSE));
    }
    RECT before = {};
    RECT after = {};
    GetWindowRect(m_pane.Before().Handle(), &before);
    GetWindowRect(m_pane.After().Handle(), &after);
    EXPECT_EQ(before.right - before.left, after.right - after.left);
    EXPECT_EQ(before.top, after.top);
    EXPECT_LT(before.right, after.left);
}
