// The section box before it is bound, and its shape as a class.
#include "SectionBox.h"

#include <bit>
#include <cstdint>
#include <type_traits>

TEST(SectionBoxDefaults, AreThoseOfAnUnfoldedSection) {
    const SectionBox box;
    EXPECT_EQ(box.m_collapsible, 1);
    EXPECT_EQ(box.m_customPaint, 0);
    EXPECT_EQ(box.m_fullSize, CSize(0, 0));
    EXPECT_EQ(box.m_collapsed, 0);
    EXPECT_EQ(box.m_pressed, 0);
    EXPECT_TRUE(box.m_innerWindows.IsEmpty());
    EXPECT_TRUE(box.m_reshowWindows.IsEmpty());
    EXPECT_TRUE(box.m_hiddenBeforeWindows.IsEmpty());
    EXPECT_TRUE(box.m_windowsBelow.IsEmpty());
    EXPECT_EQ(box.m_collapsedHeight, 30);
    EXPECT_EQ(box.m_headerHeight, 20);
    EXPECT_EQ(box.m_shown, 1);
    EXPECT_EQ(box.m_enabled, 1);
    EXPECT_EQ(box.m_excludeById, 0);
    EXPECT_EQ(box.m_excludedId, -1);
    EXPECT_EQ(box.m_useTitleColour, 1);
    EXPECT_EQ(box.m_titleColour, 0x00B26600u);
}

TEST(SectionBoxDefaults, FontIsSmallAndBold) {
    SectionBox box;
    LOGFONTW font{};
    ASSERT_NE(GetObjectW(box.m_titleFont.GetSafeHandle(), sizeof font, &font), 0);
    EXPECT_EQ(font.lfHeight, 13);
    EXPECT_EQ(font.lfWidth, 6);
    EXPECT_EQ(font.lfWeight, 700);
    EXPECT_EQ(font.lfItalic, 0);
    EXPECT_EQ(font.lfUnderline, 0);
    EXPECT_EQ(font.lfStrikeOut, 0);
    EXPECT_EQ(font.lfEscapement, 0);
    EXPECT_EQ(font.lfOrientation, 0);
    EXPECT_EQ(font.lfCharSet, 0);
    EXPECT_EQ(font.lfOutPrecision, 0);
    EXPECT_EQ(font.lfClipPrecision, 0);
    EXPECT_EQ(font.lfQuality, 0);
    EXPECT_EQ(font.lfPitchAndFamily, 0x10);
    EXPECT_STREQ(font.lfFaceName, L"MS Shell Dlg 2");
}

TEST(SectionBoxType, MessageMapStandsInItsOrder) {
    std::vector<UINT> messages;
    for (auto* entry = SectionBox::GetThisMessageMap()->lpEntries; entry->pfn != nullptr; ++entry) {
        messages.push_back(entry->nMessage);
    }
    EXPECT_EQ(messages, (std::vector<UINT>{WM_PAINT, WM_MOUSEMOVE, WM_LBUTTONDBLCLK, WM_LBUTTONUP,
                                           WM_LBUTTONDOWN, WM_NCHITTEST}));
}

TEST(SectionBoxType, AddsNoVirtualOperation) {
    static_assert(std::is_base_of_v<CStatic, MXOVGroupBoxEx>);
    using Operation = void (MXOVGroupBoxEx::*)();
    struct Representation {
        std::uintptr_t functionOrSlot; // odd for a virtual function
        std::ptrdiff_t adjustment;
    };
    for (const Operation operation :
         {&MXOVGroupBoxEx::Toggle, &MXOVGroupBoxEx::Expand, &MXOVGroupBoxEx::Collapse}) {
        EXPECT_EQ(std::bit_cast<Representation>(operation).functionOrSlot % 2, 0u);
    }
}
