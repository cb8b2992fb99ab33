#include "CollapseBox.h"

#include "ImportHook.h"

#include <array>
#include <bit>
#include <set>

namespace {

std::vector<UINT> formats; // of texts that were drawn

int WINAPI RecordFormat(HDC /*dc*/, LPCWSTR /*text*/, int /*length*/, RECT* /*place*/, UINT format) {
    formats.push_back(format);
    return 1;
}

TEST(CollapseBoxDefaults, AreThoseOfAnUnfoldedBoxInSystemColours) {
    const CollapseBox box;
    EXPECT_EQ(box.m_children.GetSize(), 0);
    EXPECT_FALSE(box.m_collapsed);
    EXPECT_TRUE(box.m_headerRect.IsRectEmpty());
    EXPECT_FALSE(box.m_whiteBody);
    EXPECT_EQ(box.m_memoryDC.m_hDC, nullptr);
    EXPECT_TRUE(box.m_glyphRect.IsRectEmpty());
    EXPECT_TRUE(box.m_frameRect.IsRectEmpty());
    EXPECT_TRUE(box.m_title.IsEmpty());
    EXPECT_EQ(box.m_borderColour, GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(box.m_headerColour, GetSysColor(COLOR_INACTIVECAPTION));
    EXPECT_EQ(box.m_headerNormalColour, GetSysColor(COLOR_INACTIVECAPTION));
    EXPECT_EQ(box.m_headerHotColour, GetSysColor(COLOR_ACTIVECAPTION));
    EXPECT_EQ(box.m_backgroundColour, GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(box.m_titleColour, GetSysColor(COLOR_CAPTIONTEXT));
    EXPECT_EQ(box.m_glyphColour, GetSysColor(COLOR_CAPTIONTEXT));
    EXPECT_EQ(box.m_alignment, 2);
    EXPECT_EQ(box.m_font.GetSafeHandle(), nullptr);
    EXPECT_FALSE(box.m_renderedOnce);
}

// A host may call the class through its table of virtual functions: the order is part of what it offers.
TEST(CollapseBoxType, VirtualOperationsFollowEachOtherInTheTable) {
    struct Representation {
        std::ptrdiff_t slotOffset; // in bytes, plus 1
        std::ptrdiff_t adjustment;
    };
    const auto slot = [](auto operation) {
        return (std::bit_cast<Representation>(operation).slotOffset - 1) /
               static_cast<std::ptrdiff_t>(sizeof(void*));
    };
    const std::array slots{
        slot(&CollapseGroupBox::SetBorderColor), slot(&CollapseGroupBox::SetTitleColor),
        slot(&CollapseGroupBox::SetHeaderColor), slot(&CollapseGroupBox::SetTitle),
        slot(&CollapseGroupBox::SetBold),        slot(&CollapseGroupBox::SetFontName),
        slot(&CollapseGroupBox::SetUnderline),   slot(&CollapseGroupBox::SetItalic),
        slot(&CollapseGroupBox::SetFontSize),    slot(&CollapseGroupBox::SetLogFont),
        slot(&CollapseGroupBox::SetAlignment),   slot(&CollapseGroupBox::SetCollapsed),
    };
    for (size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], slots[0] + static_cast<std::ptrdiff_t>(i));
    }
    EXPECT_GT(slots[0], slot(&CButton::PreSubclassWindow)) << "after those of the base";
    EXPECT_EQ(std::bit_cast<Representation>(&CollapseGroupBox::SetBackgroundColor).slotOffset % 2, 0)
        << "not virtual";
}

TEST(CollapseBoxType, MessageMapStandsInItsOrder) {
    std::vector<UINT> messages;
    for (auto* entry = CollapseBox::GetThisMessageMap()->lpEntries; entry->pfn != nullptr; ++entry) {
        messages.push_back(entry->nMessage);
    }
    EXPECT_EQ(messages, (std::vector<UINT>{WM_PAINT, WM_SIZE, WM_ERASEBKGND, WM_LBUTTONDOWN, WM_MOUSEMOVE}));
}

TEST_F(CollapseBoxTest, SubclassingSetsFontAndStyle) {
    Bind();
    LOGFONTW font{};
    ASSERT_NE(box.m_font.GetLogFont(&font), 0);
    EXPECT_EQ(font.lfHeight, 11);
    EXPECT_EQ(font.lfWidth, 0);
    EXPECT_EQ(font.lfEscapement, 0);
    EXPECT_EQ(font.lfOrientation, 0);
    EXPECT_EQ(font.lfWeight, 700);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(font.lfUnderline, 0);
    EXPECT_EQ(font.lfStrikeOut, 0);
    EXPECT_EQ(font.lfCharSet, 0);
    EXPECT_EQ(font.lfOutPrecision, 0);
    EXPECT_EQ(font.lfClipPrecision, 0);
    EXPECT_EQ(font.lfQuality, PROOF_QUALITY);
    EXPECT_EQ(font.lfPitchAndFamily, 0x12);
    EXPECT_STREQ(font.lfFaceName, L"MS Sans Serif");
    EXPECT_EQ(box.GetStyle() & 0x0400020F, 0x0400020Fu);
    EXPECT_EQ(box.GetStyle() & (WS_CHILD | WS_VISIBLE), WS_CHILD | WS_VISIBLE) << "nothing is removed";
}

TEST_F(CollapseBoxTest, SubclassingForgetsTheFontThatWasSetBefore) {
    box.SetBold(false).SetItalic(true).SetUnderline(true).SetFontSize(20).SetFontName(L"Tahoma",
                                                                                      SYMBOL_CHARSET);
    Bind();
    LOGFONTW font{};
    ASSERT_NE(box.m_font.GetLogFont(&font), 0);
    EXPECT_EQ(font.lfHeight, 11);
    EXPECT_EQ(font.lfWidth, 0);
    EXPECT_EQ(font.lfWeight, 700);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(font.lfUnderline, 0);
    EXPECT_EQ(font.lfCharSet, 0);
    EXPECT_STREQ(font.lfFaceName, L"MS Sans Serif");
}

TEST_F(CollapseBoxTest, TitleIsDrawnWithItsMnemonic) {
    formats.clear();
    const ImportHook hook("DrawTextW", RecordFormat);
    ASSERT_TRUE(hook.Real());
    Bind(L"&Options");
    ASSERT_FALSE(formats.empty());
    EXPECT_EQ(std::set<UINT>(formats.begin(), formats.end()), std::set<UINT>{0x124u});
}

TEST_F(CollapseBoxTest, WindowTextBecomesATitleBetweenBlanks) {
    Bind();
    EXPECT_EQ(box.m_title, L" Options ");
}

TEST_F(CollapseBoxTest, SetTitleIsUsedUnchanged) {
    Bind();
    box.SetTitle(L"Tools");
    EXPECT_EQ(box.m_title, L"Tools");
}

TEST_F(CollapseBoxTest, EmptyTitleFallsBackToTheWindowText) {
    Bind();
    box.SetTitle(L"Tools").SetTitle(L"");
    EXPECT_EQ(box.m_title, L" Options ");
}

TEST_F(CollapseBoxTest, TitleBeforeTheWindowIsLost) {
    box.SetTitle(L"Lost");
    EXPECT_TRUE(box.m_title.IsEmpty());
    Bind();
    EXPECT_EQ(box.m_title, L" Options ");
}

TEST_F(CollapseBoxTest, OtherSettersWorkBeforeTheWindow) {
    box.SetBorderColor(1).SetTitleColor(2).SetHeaderColor(3).SetAlignment(0).SetBackgroundColor(4);
    Bind();
    EXPECT_EQ(box.m_borderColour, 1u);
    EXPECT_EQ(box.m_titleColour, 2u);
    EXPECT_EQ(box.m_headerColour, 3u);
    EXPECT_EQ(box.m_alignment, 0);
    EXPECT_EQ(box.m_backgroundColour, 4u);
}

TEST_F(CollapseBoxTest, FoldingBeforeTheWindowDoesNothing) {
    box.SetCollapsed(true);
    EXPECT_FALSE(box.m_collapsed);
}

TEST_F(CollapseBoxTest, EverySetterGivesTheBoxBack) {
    Bind();
    const LOGFONT font = box.m_logFont;
    for (const CollapseGroupBox* const result :
         {&box.SetBorderColor(1), &box.SetTitleColor(2), &box.SetHeaderColor(3), &box.SetTitle(L"T"),
          &box.SetBold(true), &box.SetFontName(L"Tahoma", 0), &box.SetUnderline(true), &box.SetItalic(true),
          &box.SetFontSize(8), &box.SetLogFont(font), &box.SetAlignment(1), &box.SetCollapsed(true),
          &box.SetBackgroundColor(4)}) {
        EXPECT_EQ(result, &box);
    }
}

TEST_F(CollapseBoxTest, FontSettersChangeTheirPartAndRecreateTheFont) {
    Bind();
    const auto created = [this] {
        LOGFONTW font{};
        box.m_font.GetLogFont(&font);
        return font;
    };
    EXPECT_EQ(box.SetBold(false).GetSafeHwnd(), box.m_hWnd);
    EXPECT_EQ(created().lfWeight, 400);
    box.SetBold(true);
    EXPECT_EQ(created().lfWeight, 700);
    box.SetUnderline(true);
    EXPECT_EQ(created().lfUnderline, 1);
    box.SetItalic(true);
    EXPECT_EQ(created().lfItalic, 1);
    box.SetUnderline(false).SetItalic(false);
    EXPECT_EQ(created().lfUnderline, 0);
    EXPECT_EQ(created().lfItalic, 0);
    box.SetFontName(L"Tahoma", GREEK_CHARSET);
    EXPECT_EQ(created().lfCharSet, GREEK_CHARSET);
    EXPECT_STREQ(created().lfFaceName, L"Tahoma");
}

TEST_F(CollapseBoxTest, FaceNameIsCutToWhatTheDescriptionHolds) {
    Bind();
    const std::wstring name(40, L'x');
    box.SetFontName(name.c_str(), 0);
    EXPECT_EQ(std::wstring(box.m_logFont.lfFaceName), name.substr(0, 31));
    EXPECT_EQ(box.m_alignment, 2) << "what follows is untouched";
}

TEST_F(CollapseBoxTest, FontSizeTakesHeightAndWidthOnly) {
    Bind();
    box.SetItalic(true).SetFontSize(12);
    CFont font;
    font.CreatePointFont(120, L"MS Sans Serif");
    LOGFONTW expected{};
    font.GetLogFont(&expected);
    EXPECT_EQ(box.m_logFont.lfHeight, expected.lfHeight);
    EXPECT_EQ(std::abs(box.m_logFont.lfHeight), MulDiv(12, GetDpiForSystem(), 72)) << "12 points";
    EXPECT_EQ(box.m_logFont.lfWidth, expected.lfWidth);
    EXPECT_EQ(box.m_logFont.lfItalic, 1);
    EXPECT_EQ(box.m_logFont.lfWeight, 700);
    EXPECT_STREQ(box.m_logFont.lfFaceName, L"MS Sans Serif");
}

TEST_F(CollapseBoxTest, LogFontReplacesTheWholeDescription) {
    Bind();
    LOGFONT font{};
    font.lfHeight = -20;
    font.lfStrikeOut = 1;
    lstrcpyW(font.lfFaceName, L"Tahoma");
    box.SetLogFont(font);
    EXPECT_EQ(box.m_logFont.lfHeight, -20);
    EXPECT_EQ(box.m_logFont.lfWeight, 0);
    EXPECT_EQ(box.m_logFont.lfStrikeOut, 1);
    EXPECT_STREQ(box.m_logFont.lfFaceName, L"Tahoma");
}

TEST_F(CollapseBoxTest, UnknownAlignmentChangesNothingButRedraws) {
    Bind();
    box.SetAlignment(1);
    const int erasures = parent.Erasures();
    for (const int alignment : {5, 3, -1}) {
        box.SetAlignment(alignment);
        EXPECT_EQ(box.m_alignment, 1);
    }
    EXPECT_EQ(parent.Erasures(), erasures + 3);
}

TEST_F(CollapseBoxTest, BackgroundColourDoesNotRedraw) {
    Bind();
    const int erasures = parent.Erasures();
    box.SetBackgroundColor(RGB(1, 2, 3));
    EXPECT_EQ(parent.Erasures(), erasures);
    box.SetBorderColor(0);
    EXPECT_EQ(parent.Erasures(), erasures + 1);
}

TEST_F(CollapseBoxTest, KeysPassThrough) {
    Bind();
    MSG message{box.m_hWnd, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_FALSE(box.PreTranslateMessage(&message));
}

} // namespace
