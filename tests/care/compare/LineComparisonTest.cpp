#include "care/compare/LineComparison.h"

#include "care/compare/GCodeLines.h"

#include <gtest/gtest.h>

#include <random>

using namespace care;

namespace {

std::string Shown(const std::vector<LineDifference>& differences) {
    std::string text;
    for (const LineDifference& difference : differences) {
        text +=
            (difference.isRemoved ? "-" : "+") + std::to_string(difference.number) + difference.text + " ";
    }
    return text;
}

std::string Compared(std::string_view left, std::string_view right, bool isPlain = true,
                     std::size_t most = 2000) {
    return Shown(CompareLines(LinesOf(left, isPlain), LinesOf(right, isPlain), most));
}

// The right text, made of the left one and the differences.
std::vector<std::string> Patched(const std::vector<ComparedLine>& left,
                                 const std::vector<LineDifference>& differences) {
    std::vector<std::string> lines;
    std::size_t next = 0;
    const auto copyUpTo = [&](std::size_t end) {
        while (next < end) {
            lines.emplace_back(left[next++].text);
        }
    };
    for (const LineDifference& difference : differences) {
        if (difference.isRemoved) {
            copyUpTo(difference.number - 1);
            ++next;
        } else {
            while (lines.size() + 1 < difference.number) {
                copyUpTo(next + 1);
            }
            lines.push_back(difference.text);
        }
    }
    copyUpTo(left.size());
    return lines;
}

} // namespace

TEST(LineComparison, FindsWhatDiffers) {
    EXPECT_EQ(Compared("", ""), "");
    EXPECT_EQ(Compared("a\nb\nc\n", "a\nb\nc\n"), "");
    EXPECT_EQ(Compared("a\nb\nc\n", "a\nx\nc\n"), "-2b +2x ");
    EXPECT_EQ(Compared("a\nb\n", "b\nc\n"), "-1a +2c ");
    EXPECT_EQ(Compared("", "a\nb"), "+1a +2b ");
    EXPECT_EQ(Compared("a\r\nb\rc", ""), "-1a -2b -3c ");
    EXPECT_EQ(Compared("a\nb\nc\na\nb\nb\na\n", "c\nb\na\nb\na\nc\n").size(), 20u);
}

TEST(LineComparison, TakesAllForDifferentBeyondTheLimit) {
    EXPECT_EQ(Compared("x\na\nb\nc\ny\n", "x\nd\nb\ne\ny\n", true, 4), "-2a +2d -4c +4e ");
    EXPECT_EQ(Compared("x\na\nb\nc\ny\n", "x\nd\nb\ne\ny\n", true, 3), "-2a -3b -4c +2d +3b +4e ");
}

TEST(LineComparison, MakesTheOneTextOfTheOther) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        std::string texts[2];
        for (std::string& text : texts) {
            for (unsigned count = random() % 20; count > 0; --count) {
                text += static_cast<char>('a' + random() % 4);
                text += '\n';
            }
        }
        const auto left = LinesOf(texts[0], true);
        const auto right = LinesOf(texts[1], true);
        std::vector<std::string> expected;
        expected.reserve(right.size());
        for (const ComparedLine& line : right) {
            expected.emplace_back(line.text);
        }
        EXPECT_EQ(Patched(left, CompareLines(left, right)), expected) << texts[0] << "---\n" << texts[1];
    }
}

TEST(GCodeLines, DropNumbersCommentsAndBlanks) {
    EXPECT_EQ(WithoutNoise("N10 G0 X1.5 (rapid) Y2 ; go"), "G0X1.5Y2");
    EXPECT_EQ(WithoutNoise("/n0020G1\tZ-3"), "/G1Z-3");
    EXPECT_EQ(WithoutNoise("(only (a comment)"), "");
    EXPECT_EQ(WithoutNoise("N100"), "");
    EXPECT_EQ(WithoutNoise("NURBS"), "NURBS");
    EXPECT_EQ(WithoutNoise("G0 X1 N5"), "G0X1N5");
}

TEST(GCodeLines, CompareWithoutNoiseUnlessAsked) {
    const std::string_view left = "%\nN10 G0 X1\n\nN20 G1 Z-1 (cut)\n";
    const std::string_view right = "%\nN5 G0X1\nN6 G1 Z-1.\n";
    EXPECT_EQ(Compared(left, right, false), "-4N20 G1 Z-1 (cut) +3N6 G1 Z-1. ");
    EXPECT_EQ(Compared(left, left, false), "");
    EXPECT_EQ(Compared(left, right, true).substr(0, 12), "-2N10 G0 X1 ");
}
