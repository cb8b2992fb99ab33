#include "compare/TextPair.h"

#include "compare/TextKinds.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr wchar_t kOldProgram[] = L"N10 G0 X1\nN20 G1 Y2\nN30 M30\n";
constexpr wchar_t kNewProgram[] = L"N5 G0 X1\nN10 G1 Y3\n\u00e4\nN15 M30\n";

// Each row with sign and number of its line, and its text.
std::wstring ColumnText(const std::vector<TextLine>& lines) {
    constexpr wchar_t kSigns[] = L"=-+*.";
    std::wstring text;
    for (const TextLine& line : lines) {
        text += kSigns[static_cast<std::size_t>(line.mark)] + std::to_wstring(line.number) + line.text + L"|";
    }
    return text;
}

TextColumns Arranged(bool isPlain, TextKind kind = TextKind::GCode) {
    return ArrangeTexts({.before = kOldProgram, .after = kNewProgram, .kind = kind}, isPlain);
}

} // namespace

TEST(TextPair, ColumnsHaveTheSameRows) {
    const TextColumns columns = Arranged(false);
    EXPECT_EQ(ColumnText(columns.before), L"=1N10 G0 X1|*2N20 G1 Y2|.0|=3N30 M30|");
    EXPECT_EQ(ColumnText(columns.after), L"=1N5 G0 X1|*2N10 G1 Y3|+3\u00e4|=4N15 M30|");
    EXPECT_EQ(columns.differences, (std::vector<RowRange>{{1, 3}}));
    EXPECT_FALSE(columns.before[0].tints.empty());
}

TEST(TextPair, NumbersOfBlocksCountWhenAsked) {
    EXPECT_EQ(Arranged(true).differences, (std::vector<RowRange>{{0, 4}}));
}

TEST(TextPair, OtherTextsAreComparedAsTheyAre) {
    EXPECT_EQ(Arranged(false, TextKind::Plain).differences, (std::vector<RowRange>{{0, 4}}));
}

TEST(TextPair, DifferencesAreApartWhereALineIsEqual) {
    const TextColumns columns =
        ArrangeTexts({.before = L"a\nb\nc\nd", .after = L"a\nX\nc\n", .kind = TextKind::Plain}, false);
    EXPECT_EQ(columns.differences, (std::vector<RowRange>{{1, 2}, {3, 4}}));
    EXPECT_EQ(ColumnText(columns.after), L"=1a|*2X|=3c|.0|");
}

TEST(TextPair, EqualTextsHaveNoDifference) {
    EXPECT_TRUE(ArrangeTexts({.before = L"a\r\nb", .after = L"a\nb\n"}, true).differences.empty());
    EXPECT_TRUE(ArrangeTexts({}, true).before.empty());
}

TEST(TextKinds, NamesOfTexts) {
    EXPECT_EQ(KindOfText(L"NC\\1.NC"), TextKind::GCode);
    EXPECT_EQ(KindOfText(L"setup.xml"), TextKind::Markup);
    EXPECT_EQ(KindOfText(L"a.b\\notes.csv"), TextKind::Plain);
    EXPECT_FALSE(KindOfText(L"photo.jpg"));
    EXPECT_FALSE(KindOfText(L"txt"));
    EXPECT_FALSE(KindOfText(L""));
}
