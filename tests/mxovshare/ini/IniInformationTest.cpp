#include "ini/IniInformation.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

TEST(IniInformation, GivesSectionsWithTheirValuesInOrder) {
    const std::vector<InformationSection> sections = ParseInformation(
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
    EXPECT_TRUE(ParseInformation("").empty());
    EXPECT_TRUE(ParseInformation(std::string(1000, '\0')).empty());
}

} // namespace
} // namespace mxovshare
