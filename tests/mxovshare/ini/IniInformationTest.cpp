#include "ini/IniInformation.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace mxovshare {
namespace {

Information Parsed(std::string bytes) {
    Information information;
    EXPECT_TRUE(information.Parse(std::move(bytes)));
    return information;
}

TEST(IniInformation, GivesSectionsWithTheirValuesInOrder) {
    const Information information = Parsed(
        "; c\r\n[FILEINFO]\r\nThumbnail = \" a \"\r\nGCode=\\esc:x\\ny\r\n[b]\r\n[fileinfo]\r\nz=1\r\n");
    const std::vector<InformationSection> sections(information.begin(), information.end());
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0].name, L"FILEINFO");
    ASSERT_EQ(sections[0].values.size(), 2U);
    EXPECT_EQ(sections[0].values[0], std::make_pair(std::wstring(L"Thumbnail"), std::wstring(L" a ")));
    EXPECT_EQ(sections[0].values[1], std::make_pair(std::wstring(L"GCode"), std::wstring(L"x\ny")));
    EXPECT_EQ(sections[1].name, L"b");
    EXPECT_TRUE(sections[1].values.empty());
}

TEST(IniInformation, AnIteratorMovesOnBeforeOrAfterItIsRead) {
    const Information information = Parsed("[a]\n[b]\n[c]\n");
    auto place = information.begin();
    EXPECT_EQ((*place++).name, L"a");
    EXPECT_EQ((*place).name, L"b");
    EXPECT_EQ((*++place).name, L"c");
    EXPECT_EQ(++place, information.end());
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

TEST(IniInformation, OfRepeatedKeysTheFirstCounts) {
    const Information information = Parsed("[s]\nb=1\na=2\n B =3\nA=4\nc\n=5\n");
    const InformationSection section = *information.begin();
    using Values = std::vector<std::pair<std::wstring, std::wstring>>;
    EXPECT_EQ(section.values, (Values{{L"b", L"1"}, {L"a", L"2"}, {L"c", L""}}));
    EXPECT_EQ(information.Value(L"S", L" b "), L"1");
    EXPECT_EQ(information.Value(L"s", L"C"), L"");
    EXPECT_EQ(information.Value(L"s", L"\xC4"), L"");
    EXPECT_EQ(information.Value(L"none", L"a"), L"");
    EXPECT_EQ(information.Find(L" S ")->values, section.values);
    EXPECT_FALSE(information.Find(L"none"));
}

TEST(IniInformation, NamesOutsideAsciiCompareWithoutCaseToo) {
    const Information information = Parsed("\xEF\xBB\xBF[Stra\xC3\x9F"
                                           "e \xC3\xA4]\n\xC3\xA4=1\n");
    EXPECT_EQ(information.Value(L"STRA\xDF"
                                L"E \xC4",
                                L"\xC4"),
              L"1");
}

TEST(IniInformation, IsEditedAndCopied) {
    Information information = Parsed("[REFERANCE_FILE_1]\nFilePath=a\n[b]\nk=v\n[REFERANCE_FILE_3]\n");
    const Information before = information;
    information.RemoveSection(L"REFERANCE_FILE_1");
    information.SetValue(L"referance_file_3", L"FilePath", L"c");
    information.SetValue(L"REFERANCE_FILE_4", L"FilePath", L"d");
    using Names = std::vector<std::wstring>;
    EXPECT_EQ(information.SectionNames(L"REFERANCE_FILE"), (Names{L"REFERANCE_FILE_3", L"REFERANCE_FILE_4"}));
    EXPECT_EQ(information.Value(L"REFERANCE_FILE_3", L"FilePath"), L"c");
    EXPECT_EQ(before.SectionNames({}), (Names{L"REFERANCE_FILE_1", L"b", L"REFERANCE_FILE_3"}));
    information = before;
    EXPECT_EQ(information.Value(L"REFERANCE_FILE_1", L"FilePath"), L"a");
}

TEST(IniInformation, MoreThanTheMostSectionsOrLinesAreRefused) {
    constexpr IniLimits kMost = kMostInformation;
    Information information;
    const auto sectionsOf = [&](std::string bytes) {
        return information.Parse(std::move(bytes)) ? std::ranges::distance(information) : -1;
    };
    EXPECT_EQ(sectionsOf(Repeated("[a]\n", kMost.sections)), 1);
    EXPECT_EQ(sectionsOf(Repeated("[a]\n", kMost.sections + 1)), -1);
    EXPECT_TRUE(information.empty());
    EXPECT_EQ(sectionsOf("[a]\n; c\n\n" + Repeated("b\n", kMost.lines - 1)), 1);
    EXPECT_EQ(sectionsOf("[a]\n" + Repeated("b\n", kMost.lines)), -1);
    EXPECT_TRUE(information.empty());
    EXPECT_EQ(sectionsOf("[a]\n" + std::string(kMost.length, 'b') + "\n"), -1);
    EXPECT_EQ(sectionsOf("[a]\n" + std::string(kMost.length - 1, 'b') + "\n"), 1);
}

} // namespace
} // namespace mxovshare
