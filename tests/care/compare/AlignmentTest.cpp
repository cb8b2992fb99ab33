#include "care/compare/Alignment.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace care;

namespace {

// Each row as its sign and the numbers of its lines, "-" for a gap.
std::string Aligned(std::string_view left, std::string_view right, bool isPlain = true) {
    constexpr char kSigns[] = {'=', '<', '>', '!'};
    std::string text;
    for (const AlignedRow& row : AlignTexts(left, right, isPlain)) {
        text += kSigns[static_cast<std::size_t>(row.kind)];
        text += row.left == 0 ? "-" : std::to_string(row.left);
        text += row.right == 0 ? "- " : std::to_string(row.right) + " ";
    }
    return text;
}

std::string RandomText(std::mt19937& random) {
    constexpr const char* kLines[] = {"N10 G0 X1\n", "G0 X1\r\n", "(comment)\n", "\n", "M30\n", "N5 M30"};
    std::string text;
    for (unsigned count = random() % 12; count > 0; --count) {
        text += kLines[random() % std::size(kLines)];
    }
    return text;
}

} // namespace

TEST(Alignment, EqualLinesShareARow) {
    EXPECT_EQ(Aligned("", ""), "");
    EXPECT_EQ(Aligned("a\nb\n", "a\r\nb"), "=11 =22 ");
}

TEST(Alignment, ALineThatOneTextHasStandsBesideAGap) {
    EXPECT_EQ(Aligned("a\nb\nc\n", "a\nc\n"), "=11 <2- =32 ");
    EXPECT_EQ(Aligned("a\nc\n", "a\nb\nc\n"), "=11 >-2 =23 ");
    EXPECT_EQ(Aligned("", "a\n"), ">-1 ");
}

TEST(Alignment, LinesThatTakeThePlaceOfEachOtherShareARow) {
    EXPECT_EQ(Aligned("a\nb\nc\n", "a\nX\nY\nc\n"), "=11 !22 >-3 =34 ");
    EXPECT_EQ(Aligned("a\nb\nc\nd\n", "a\nX\nd\n"), "=11 !22 <3- =43 ");
}

TEST(Alignment, NoiseIsNeverDifferentUnlessAsked) {
    constexpr std::string_view kOld = "N10 G0 X1\n(old)\nN20 M30\n";
    constexpr std::string_view kNew = "N5 G0 X1 (fast)\n\nN10 M30\n";
    EXPECT_EQ(Aligned(kOld, kNew, false), "=11 =22 =33 ");
    EXPECT_EQ(Aligned(kOld, kNew), "!11 !22 !33 ");
    EXPECT_EQ(Aligned("G1\nG2\n", "(a)\nG1\n(b)\nG3\n", false), "=-1 =12 =-3 !24 ");
    EXPECT_EQ(Aligned("(a)\nG1\n", "G1\n", false), "=1- =21 ");
}

TEST(Alignment, HasEveryLineOnceInOrder) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        const std::string left = RandomText(random);
        const std::string right = RandomText(random);
        std::size_t leftLines = 0;
        std::size_t rightLines = 0;
        for (const AlignedRow& row : AlignTexts(left, right, round % 2 == 0)) {
            ASSERT_TRUE(row.left == 0 || row.left == ++leftLines) << left << "\n--\n" << right;
            ASSERT_TRUE(row.right == 0 || row.right == ++rightLines) << left << "\n--\n" << right;
            ASSERT_NE(row.left + row.right, 0u);
        }
        ASSERT_EQ(Aligned(left, "").empty(), leftLines == 0);
        ASSERT_EQ(AlignTexts(left, "", true).size(), leftLines);
        ASSERT_EQ(AlignTexts("", right, true).size(), rightLines);
    }
}
