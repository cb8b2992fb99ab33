#include "CommandLine.h"

#include "common/LongPath.h"
#include "package/Paths.h"

#include <gtest/gtest.h>

using namespace viewer;

TEST(CommandLine, NothingAsksForNothing) {
    const CommandLine line = ParseCommandLine({});
    EXPECT_EQ(line.package, L"");
    EXPECT_EQ(line.language, L"");
    EXPECT_FALSE(line.help);
    EXPECT_EQ(ErrorText(line), L"");
}

TEST(CommandLine, APackageBecomesAFullPath) {
    const CommandLine line = ParseCommandLine({L"job\\bracket.mxov"});
    EXPECT_EQ(line.package, common::FullPath(L"job\\bracket.mxov"));
    EXPECT_EQ(line.package.substr(1, 2), L":\\");
    EXPECT_EQ(ParseCommandLine({L"C:\\a b\\x.mxov"}).package, L"C:\\a b\\x.mxov");
}

TEST(CommandLine, TheLanguageIsTheNextWordOrFollowsASign) {
    for (const std::vector<std::wstring>& arguments :
         {std::vector<std::wstring>{L"--language", L"German", L"C:\\x.mxov"},
          {L"C:\\x.mxov", L"--language=German"}}) {
        const CommandLine line = ParseCommandLine(arguments);
        EXPECT_EQ(line.language, L"German");
        EXPECT_EQ(line.package, L"C:\\x.mxov");
        EXPECT_EQ(ErrorText(line), L"");
    }
}

TEST(CommandLine, BehindTwoDashesEverythingIsAName) {
    EXPECT_EQ(FileName(ParseCommandLine({L"--", L"--help"}).package), L"--help");
}

TEST(CommandLine, HelpIsAsked) {
    EXPECT_TRUE(ParseCommandLine({L"--help"}).help);
}

TEST(CommandLine, WhatCannotBeUnderstoodIsNamed) {
    EXPECT_NE(ErrorText(ParseCommandLine({L"--colour"})).find(L"--colour"), std::wstring::npos);
    EXPECT_NE(ErrorText(ParseCommandLine({L"--language"})), L"");
    EXPECT_NE(ErrorText(ParseCommandLine({L"a.mxov", L"b.mxov"})), L"");
    EXPECT_NE(ErrorText(ParseCommandLine({L""})), L"");
}

TEST(CommandLine, UsageNamesEveryOption) {
    EXPECT_NE(UsageText().find(L"--language NAME"), std::wstring::npos);
    EXPECT_NE(UsageText().find(L"--help"), std::wstring::npos);
}
