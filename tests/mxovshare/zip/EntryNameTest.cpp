#include "zip/EntryName.h"
#include "zip/PackageError.h"

#include <gtest/gtest.h>

#include <string>

using mxovshare::EntryNameFault;

namespace {

class AllowedName : public testing::TestWithParam<std::string> {};
class ForbiddenName : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(AllowedName, HasNoFault) {
    EXPECT_EQ(EntryNameFault(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Names, AllowedName,
                         testing::Values("mxinfo.ini", "Private/mxinfo.ini", "a", ".hidden", "..a", "a..b",
                                         " a", "a b/c d.txt", "CONSOLE.txt", "COM", "COM10", "COMA", "LPT.x1",
                                         "nul1", "a.con", "#&%$!()[]{}+,;=@^`~'-_",
                                         "\xD0\xA7\xD0\xB5\xD1\x80\xD1\x82\xD0\xB5\xD0\xB6.pdf",
                                         "\xE5\x9B\xB3\xE9\x9D\xA2.pdf", "\xF0\x9F\x94\xA7.nc",
                                         "e\xCC\x81.txt", "\xD7\x90\xE2\x80\x8F.pdf", "a.mxov-newer",
                                         std::string(255, 'x'),
                                         std::string(200, 'x') + "/" + std::string(200, 'y')));

TEST(QuoteName, ShowsTheBytesOfWhatHasNoShape) {
    EXPECT_EQ(mxovshare::QuoteName("a b\xC3\xA4"), "\"a b\xC3\xA4\"");
    EXPECT_EQ(mxovshare::QuoteName("\x1F ~\x7F"), R"("\x1F ~\x7F")");
    EXPECT_EQ(mxovshare::QuoteName("\xC2\x80\xC2\x9F\xC2\xA0"), "\"\\xC2\\x80\\xC2\\x9F\xC2\xA0\"");
    EXPECT_EQ(mxovshare::QuoteName("\xE2\x80\xA8\xFF"), R"("\xE2\x80\xA8\xFF")");
}

TEST(EntryName, EveryNumberedDeviceIsRefused) {
    for (const std::string device : {"COM", "LPT"}) {
        for (char number = '0'; number <= '9'; ++number) {
            EXPECT_NE(EntryNameFault(device + number).find("device"), std::string_view::npos)
                << device << number;
        }
    }
}

TEST_P(ForbiddenName, IsRefusedForItsReason) {
    const std::string_view fault = EntryNameFault(GetParam().first);
    EXPECT_NE(fault.find(GetParam().second), std::string_view::npos) << fault;
}

INSTANTIATE_TEST_SUITE_P(
    Names, ForbiddenName,
    testing::Values(std::pair("", "empty"), std::pair("/etc/passwd", "absolute"),
                    std::pair("\\\\server\\share\\x", "absolute"), std::pair("//server/share", "absolute"),
                    std::pair("C:/x", "drive"), std::pair("c:x", "drive"), std::pair("a\\b", "only \"/\""),
                    std::pair("..", "\"..\""), std::pair("../x", "\"..\""), std::pair("a/../x", "\"..\""),
                    std::pair("a/..", "\"..\""), std::pair("./a", "\".\""), std::pair("a/./b", "\".\""),
                    std::pair("a//b", "empty part"), std::pair("a/", "empty part"),
                    std::pair("ab:c", "stream"), std::pair("<", "one of"), std::pair(">", "one of"),
                    std::pair("|", "one of"), std::pair("\"", "one of"), std::pair("?", "one of"),
                    std::pair("*?", "one of"), std::pair("dir/a.txt:stream:$DATA", "stream"),
                    std::pair("CON", "device"), std::pair("con.txt", "device"), std::pair("a/Nul", "device"),
                    std::pair("NUL .txt", "device"), std::pair("aux.tar.gz", "device"),
                    std::pair("prn", "device"), std::pair("COM1", "device"), std::pair("com9.log", "device"),
                    std::pair("LPT0", "device"), std::pair("COM\xC2\xB9", "device"),
                    std::pair("lpt\xC2\xB3.x", "device"), std::pair("CONIN$", "device"),
                    std::pair("conout$.a", "device"), std::pair("CLOCK$", "device"),
                    std::pair("invoice\xE2\x80\xAE"
                              "fdp.exe",
                              "direction"),
                    std::pair("a/\xE2\x81\xA6"
                              "b",
                              "direction"),
                    std::pair("::", "stream"), std::pair("C:", "drive letter"),
                    std::pair("mxinfo.ini.mxov-new", "reserved"), std::pair("a.MXOV-New/b", "reserved"),
                    std::pair(".mxov-new", "reserved"),
                    std::pair(
                        [] {
                            std::string name = "0";
                            for (int i = 0; i < 251; ++i) {
                                name += "/0";
                            }
                            return name;
                        }(),
                        "more than 250 folders"),
                    std::pair(
                        [] {
                            std::string name;
                            while (name.size() < 65535) {
                                name += "/\xE5\x9B\xB3\xE9\x9D\xA2\xE5\x9B\xB3\xE9\x9D\xA2" +
                                        std::string(name.size() % 2, 'x');
                                for (int i = 0; i < 80; ++i) {
                                    name += "\xE5\x9B\xB3";
                                }
                            }
                            return name.substr(1);
                        }(),
                        "65534 bytes"),
                    std::pair("a.", "dot or a blank"), std::pair("a ", "dot or a blank"),
                    std::pair("dir./a", "dot or a blank"), std::pair("dir /a", "dot or a blank"),
                    std::pair("...", "dot or a blank"), std::pair("a\x01", "control"),
                    std::pair("a\nb", "control"), std::pair("a\x7F", "control"),
                    std::pair("a\xC2\x85", "control"), std::pair(std::string("a\0b", 3), "control"),
                    std::pair("a<b", "characters"), std::pair("a>b", "characters"),
                    std::pair("a|b", "characters"), std::pair("a\"b", "characters"),
                    std::pair("a?b", "characters"), std::pair("a*b", "characters"),
                    std::pair("a\xFF", "UTF-8"), std::pair("\xC0\xAF", "UTF-8"),
                    std::pair("\xED\xA0\x80", "UTF-8"), std::pair("\xF4\x90\x80\x80", "UTF-8"),
                    std::pair("\xE2\x82", "UTF-8"), std::pair(std::string(256, 'x'), "255 characters"),
                    std::pair(
                        [] {
                            std::string name = "d";
                            while (name.size() < 32001) {
                                name += "/dddddddddddddddddddddddddddddd";
                            }
                            return name;
                        }(),
                        "32000 characters")));

TEST(EntryName, CountsCharactersBeyondTheBasicPlaneTwice) {
    std::string name;
    for (int i = 0; i < 127; ++i) {
        name += "\xF0\x9F\x94\xA7";
    }
    EXPECT_EQ(EntryNameFault(name + "x"), "");
    EXPECT_NE(EntryNameFault(name + "xx"), "");
}

TEST(EntryName, IsReadToItsLastCharacter) {
    for (std::size_t place = 0; place <= 20; ++place) {
        const auto with = [place](const char* middle) { return std::string(20, 'x').insert(place, middle); };
        EXPECT_EQ(EntryNameFault(with("\xC3\xA4")), "") << place;
        EXPECT_NE(EntryNameFault(with("\xE4")).find("UTF-8"), std::string_view::npos) << place;
        EXPECT_NE(EntryNameFault(with("\xC2\x85")).find("control"), std::string_view::npos) << place;
        EXPECT_NE(EntryNameFault(with("?")).find("characters"), std::string_view::npos) << place;
    }
}

} // namespace
