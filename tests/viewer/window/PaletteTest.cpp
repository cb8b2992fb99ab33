// The panes in the system's colours, and after these change.
#include "window/Palette.h"

#include "document/DocumentPane.h"
#include "news/NewsBar.h"
#include "PaintedColours.h"
#include "preview/HistoryPane.h"
#include "preview/PreviewPane.h"
#include "start/StartPane.h"
#include "SystemColours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace viewer;

namespace {

constexpr int kPaneWidth = 300;
constexpr int kPaneHeight = 200;

// Each pane in a window of its own.
class PaletteTest : public testing::Test {
protected:
    PaletteTest()
        : m_frame(CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, kPaneWidth, kPaneHeight, nullptr,
                                nullptr, nullptr, nullptr)) {
        m_preview.Create(m_frame.get(), 1);
        m_history.Create(m_frame.get(), 2);
        m_document.Create(m_frame.get(), 3);
        m_start.Create(m_frame.get(), 5);
        m_news.Create(m_frame.get(), 4);
        m_news.Show(L"The folder is offline.", {});
    }

    [[nodiscard]] std::array<HWND, 5> Panes() const {
        return {m_preview.Handle(), m_history.Handle(), m_document.Handle(), m_start.Handle(),
                m_news.Handle()};
    }

    // The colours of a pane, which is alone on the screen.
    [[nodiscard]] std::map<COLORREF, int> ColoursOf(HWND pane) const {
        for (const HWND other : Panes()) {
            ShowWindow(other, other == pane ? SW_SHOWNA : SW_HIDE);
        }
        MoveWindow(pane, 0, 0, kPaneWidth, kPaneHeight, FALSE);
        return CountColours(pane);
    }

    common::UniqueWindow m_frame;
    PreviewPane m_preview;
    HistoryPane m_history;
    DocumentPane m_document;
    StartPane m_start;
    NewsBar m_news;
};

} // namespace

TEST_F(PaletteTest, PanesHaveTheSystemsColoursBeforeAndAfterTheyChange) {
    const std::array<HWND, 5> panes = Panes();
    constexpr std::array<COLORREF, 5> kDark = {kDarkPage, kDarkPage, kDarkPage, kDarkPage, kDarkBar};
    const std::array<COLORREF, 5> before = {GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNFACE),
                                            GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNFACE),
                                            GetSysColor(COLOR_INFOBK)};
    for (std::size_t i = 0; i < panes.size(); ++i) {
        std::map<COLORREF, int> colours = ColoursOf(panes[i]);
        EXPECT_GT(colours[before[i]], 1000) << i;
        EXPECT_FALSE(colours.contains(kDark[i])) << i;
        const DarkSystemColours dark;
        colours = ColoursOf(panes[i]);
        EXPECT_GT(colours[kDark[i]], 1000) << i;
        if (panes[i] != m_history.Handle()) { // whose list has a header of the theme
            EXPECT_FALSE(colours.contains(before[i])) << i;
        }
    }
}

TEST_F(PaletteTest, AChangeOfTheLookRepaints) {
    for (const HWND pane : Panes()) {
        EXPECT_FALSE(ColoursOf(pane).empty());
        for (const UINT message : {WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE}) {
            ValidateRect(pane, nullptr);
            ASSERT_FALSE(GetUpdateRect(pane, nullptr, FALSE));
            SendMessageW(pane, message, 0, 0);
            EXPECT_TRUE(GetUpdateRect(pane, nullptr, FALSE)) << message;
        }
    }
}

TEST_F(PaletteTest, AllInsideAWindowLearnOfAChange) {
    MoveWindow(m_document.Handle(), 0, 0, kPaneWidth, kPaneHeight, FALSE);
    ShowWindow(m_document.Handle(), SW_SHOWNA);
    ValidateRect(m_document.Handle(), nullptr);
    PassToDescendants(m_frame.get(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_TRUE(GetUpdateRect(m_document.Handle(), nullptr, FALSE));
}

TEST(Palette, HighContrastHasNoTints) {
    const Palette palette = MakePalette(true);
    for (const COLORREF tint : {palette.comment, palette.tool, palette.blockNumber}) {
        EXPECT_EQ(tint, palette.cardText);
    }
    for (const COLORREF tint : {palette.removed, palette.added, palette.changed}) {
        EXPECT_EQ(tint, palette.card);
    }
    EXPECT_EQ(palette.text, GetSysColor(COLOR_BTNTEXT));
    EXPECT_EQ(palette.cardText, GetSysColor(COLOR_WINDOWTEXT));
}

TEST(Palette, WithoutItTheTintsDiffer) {
    const Palette palette = MakePalette(false);
    EXPECT_NE(palette.comment, palette.cardText);
    EXPECT_NE(palette.tool, palette.comment);
    EXPECT_NE(palette.blockNumber, palette.tool);
    EXPECT_NE(palette.removed, palette.card);
    EXPECT_NE(palette.added, palette.removed);
    EXPECT_NE(palette.changed, palette.added);
}

TEST(Palette, LinesThatDifferKeepTheBrightnessOfTheSystem) {
    const COLORREF white = MakePalette(false).removed;
    EXPECT_GT(GetRValue(white) + GetGValue(white) + GetBValue(white), 3 * 150);
    const DarkSystemColours dark;
    const COLORREF black = MakePalette(false).removed;
    EXPECT_LT(GetRValue(black) + GetGValue(black) + GetBValue(black), 3 * 60);
}
