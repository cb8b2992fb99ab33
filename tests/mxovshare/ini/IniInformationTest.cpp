#include "ini/IniInformation.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

std::vector<InformationSection> Parsed(std::string bytes) {
    std::vector<InformationSection> sections;
    EXPECT_TRUE(ParseInformation(std::move(bytes), sections));
    return sections;
}

TEST(IniInformation, GivesSectionsWithTheirValuesInOrder) {
    const std::vector<InformationSection> sections = Parsed(
        "; c\r\n[FILEINFO]\r\nThumbnail = \" a \"\r\nGCode=\\esc:x\\ny\r\n[b]\r\n[fileinfo]\r\nz=1\r\n");
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].name, L"FILEINFO");
    ASSERT_EQ(sections[0].values.size(), 2U);
    EXPECT_EQ(sections[0].values[0], std::make_pair(std::wstring(L"Thumbnail"), std::wstring(L" a ")));
    EXPECT_EQ(sections[0].values[1], std::make_pair(std::wstring(L"GCode"), std::wstring(L"x\ny")));
    EXPECT_EQ(sections[1].name, L"b");
    EXPECT_TRUE(sections[1].values.empty());
}

TEST(IniInformation, NothingGivesNothing) {
    EXPECT_TRUE(Parsed("").empty());
    EXPECT_TRUE(Parsed(std::string(1000, '\0')).empty());
}

std::string Repeated(const std::string& line, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += line;
    }
    return text;
}

TEST(IniInformation, MoreThanTheMostSectionsOrLinesAreRefused) {
    constexpr IniLimits kMost = kMostInformation;
    std::vector<InformationSection> sections = {{L"old", {}}};
    EXPECT_TRUE(ParseInformation(Repeated("[a]\n", kMost.sections), sections));
    EXPECT_EQ(sections.size(), 1U);
    EXPECT_FALSE(ParseInformation(Repeated("[a]\n", kMost.sections + 1), sections));
    EXPECT_TRUE(sections.empty());
    EXPECT_TRUE(ParseInformation("[a]\n; c\n\n" + Repeated("b\n", kMost.lines - 1), sections));
    EXPECT_EQ(sections.size(), 1U);
    EXPECT_FALSE(ParseInformation("[a]\n" + Repeated("b\n", kMost.lines), sections));
    EXPECT_TRUE(sections.empty());
    EXPECT_FALSE(ParseInformation("[a]\n" + std::string(kMost.length, 'b') + "\n", sections));
    EXPECT_TRUE(ParseInformation("[a]\n" + std::string(kMost.length - 1, 'b') + "\n", sections));
}

} // namespace
} // namespace mxovshare
