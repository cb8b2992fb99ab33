#include "document/TextLines.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace viewer;

namespace {

std::vector<std::wstring> Texts(std::wstring_view text) {
    std::vector<std::wstring> texts;
    for (const TextLine& line : MakeLines(text, TextKind::Plain)) {
        texts.push_back(line.text);
    }
    return texts;
}

std::vector<TintedPart> Tints(std::wstring_view line, TextKind kind) {
    return MakeLines(line, kind).at(0).tints;
}

std::wstring InTheCodePage(std::string_view bytes) {
    wchar_t text[100] = L"";
    const int length =
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), text, ARRAYSIZE(text));
    EXPECT_GT(length, 0);
    return {text, static_cast<std::size_t>(length)};
}

} // namespace

TEST(TextLines, TextsEndAtEveryKindOfLineEnd) {
    EXPECT_EQ(Texts(L""), std::vector<std::wstring>());
    EXPECT_EQ(Texts(L"a\r\nb\nc\rd"), (std::vector<std::wstring>{L"a", L"b", L"c", L"d"}));
    EXPECT_EQ(Texts(L"a\r\n\r\nb\r\n"), (std::vector<std::wstring>{L"a", L"", L"b"}));
}

TEST(TextLines, TabsReachTheNextStopAndOtherControlsAreBlanks) {
    EXPECT_EQ(Texts(L"\tx\ty\x01z"), std::vector<std::wstring>{L"        x       y z"});
}

TEST(TextLines, EncodingsAreTold) {
    EXPECT_EQ(DecodeText("plain"), L"plain");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xC3\xA4"), L"\u00E4");
    EXPECT_EQ(DecodeText("\xC3\xA4"), L"\u00E4");
    EXPECT_EQ(DecodeText(std::string_view("\xFF\xFE\xE4\x00X\x00", 6)), L"\u00E4X");
    EXPECT_EQ(DecodeText("\xE4 in the code page"), InTheCodePage("\xE4 in the code page"));
    EXPECT_EQ(DecodeText("cut \xE2\x82"), L"cut ") << "a character that is cut at the end is left out";
}

TEST(TextLines, GCodeHasTintedCommentsToolsAndBlockNumbers) {
    EXPECT_EQ(
        Tints(L"N10 T12 M6 (face mill) G0 ; go", TextKind::GCode),
        (std::vector<TintedPart>{
            {0, 3, Tint::Number}, {4, 7, Tint::Tool}, {11, 22, Tint::Comment}, {26, 30, Tint::Comment}}));
    EXPECT_EQ(Tints(L"(open", TextKind::GCode), (std::vector<TintedPart>{{0, 5, Tint::Comment}}));
    EXPECT_EQ(Tints(L"n5t3", TextKind::GCode),
              (std::vector<TintedPart>{{0, 2, Tint::Number}, {2, 4, Tint::Tool}}));
    EXPECT_EQ(Tints(L"NT X10 TOOL", TextKind::GCode), std::vector<TintedPart>());
    EXPECT_EQ(Tints(L"N10 (plain)", TextKind::Plain), std::vector<TintedPart>());
}

TEST(TextLines, CommentsOfMarkupRunOverLines) {
    const std::vector<TextLine> lines =
        MakeLines(L"<a><!-- one --><b/>\n<!-- two\nthree\nfour --> x <!-- five -->", TextKind::Markup);
    EXPECT_EQ(lines[0].tints, (std::vector<TintedPart>{{3, 15, Tint::Comment}}));
    EXPECT_EQ(lines[1].tints, (std::vector<TintedPart>{{0, 8, Tint::Comment}}));
    EXPECT_EQ(lines[2].tints, (std::vector<TintedPart>{{0, 5, Tint::Comment}}));
    EXPECT_EQ(lines[3].tints, (std::vector<TintedPart>{{0, 8, Tint::Comment}, {11, 24, Tint::Comment}}));
}
