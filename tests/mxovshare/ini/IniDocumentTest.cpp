#include "ini/IniDocument.h"

#include "EditComparison.h"
#include "TestPlatform.h"

#include <gtest/gtest.h>

namespace mxovshare {
namespace {

using namespace std::string_literals;
using Names = std::vector<std::u16string>;

const SingleBytePage kLatin;
const DoubleBytePage kEastAsian;

std::string Utf16(std::u16string_view text, IniEncoding encoding = IniEncoding::Utf16) {
    std::string bytes(MarkOf(encoding));
    EncodeText(text, encoding, kLatin, bytes);
    return bytes;
}

// The bytes after one key was set.
std::string AfterSet(const std::string& bytes, std::u16string_view section, std::u16string_view key,
                     std::u16string_view value, const TextPlatform& platform = kLatin) {
    IniDocument document(platform, bytes);
    EXPECT_TRUE(document.SetValue(section, key, value));
    EXPECT_EQ(document.Value(section, key), value);
    EXPECT_EQ(IniDocument(platform, document.Bytes()).Value(section, key), value);
    return document.Bytes();
}

std::string AfterRemove(const std::string& bytes, std::u16string_view section) {
    IniDocument document(kLatin, bytes);
    EXPECT_TRUE(document.RemoveSection(section));
    EXPECT_TRUE(document.SectionNames(section).empty());
    return document.Bytes();
}

std::u16string Read(const std::string& bytes, std::u16string_view section, std::u16string_view key) {
    return IniDocument(kLatin, bytes).Value(section, key);
}

TEST(IniDocumentReading, FindsValuesWithoutRegardToCaseAndBlanks) {
    const std::string bytes =
        "\r\n  [ FileInfo ] ; note\r\n\t Thumb Nail \t=  a b.bmp \t\r\nX=\n[Other]\rX=1\r";
    EXPECT_EQ(Read(bytes, u"FILEINFO", u"thumb nail"), u"a b.bmp");
    EXPECT_EQ(Read(bytes, u" fileinfo ", u" Thumb Nail "), u"a b.bmp");
    EXPECT_EQ(Read(bytes, u"FileInfo", u"x"), u"");
    EXPECT_EQ(Read(bytes, u"OTHER", u"x"), u"1");
}

TEST(IniDocumentReading, WhatIsMissingIsEmpty) {
    for (const std::string& bytes :
         {""s, "[s"s, "[s]"s, "k=v"s, "[]\nk=v"s, "[t]\nk=v\n;[s]\nk=v"s, "[s]\n;k=v\nkk=v\nk"s}) {
        EXPECT_EQ(Read(bytes, u"s", u"k"), u"") << bytes;
        EXPECT_EQ(Read(bytes, u"", u"k"), u"") << bytes;
        EXPECT_EQ(Read(bytes, u"s", u""), u"") << bytes;
    }
}

TEST(IniDocumentReading, FirstSectionAndFirstKeyCount) {
    const std::string bytes = "[s]\nk=1\nK=2\n[S]\nk=3\nj=4\n";
    EXPECT_EQ(Read(bytes, u"s", u"k"), u"1");
    EXPECT_EQ(Read(bytes, u"s", u"j"), u"");
    EXPECT_EQ(IniDocument(kLatin, bytes).SectionNames(u""), Names{u"s"});
}

TEST(IniDocumentReading, ValuesMayHoldAnythingButALineEnd) {
    const std::string bytes = "[s]\na=1;2=[3]\nb= \"q\" \nc='q'\nd=\"\"q\"\"\ne=\"\n[t]x]\nf=1";
    EXPECT_EQ(Read(bytes, u"s", u"a"), u"1;2=[3]");
    EXPECT_EQ(Read(bytes, u"s", u"b"), u"q");
    EXPECT_EQ(Read(bytes, u"s", u"c"), u"q");
    EXPECT_EQ(Read(bytes, u"s", u"d"), u"\"q\"");
    EXPECT_EQ(Read(bytes, u"s", u"e"), u"\"");
    EXPECT_EQ(Read(bytes, u"t]x", u"f"), u"1");
}

TEST(IniDocumentReading, KnowsItsEncodings) {
    EXPECT_EQ(Read("[s]\nk=\xE9", u"s", u"k"), u"\xE9");
    EXPECT_EQ(Read("[s]\nk=\xC3\xA9", u"s", u"k"), u"\xE9");
    EXPECT_EQ(Read("\xEF\xBB\xBF[s]\nk=\xC3\xA9", u"s", u"k"), u"\xE9");
    EXPECT_EQ(Read(Utf16(u"[s]\r\nk=\x4E2D\n"), u"s", u"k"), u"\x4E2D");
    EXPECT_EQ(Read(Utf16(u"[s]\r\nk=\x4E2D\n", IniEncoding::Utf16BigEndian), u"s", u"k"), u"\x4E2D");
    EXPECT_EQ(Read("[\xC3\xA9t\xC3\xA9]\nk=1", u"\xC9T\xC9", u"k"), u"1");
    EXPECT_EQ(Read("[\xE9t\xE9]\nk=1", u"\xC9T\xC9", u"k"), u"1");
    EXPECT_EQ(Read(Utf16(u"[\x43F]\n\x3B1=1"), u"\x41F", u"\x391"), u"1");
}

TEST(IniDocumentReading, Utf16NeedsNoMark) {
    for (const IniEncoding encoding : {IniEncoding::Utf16, IniEncoding::Utf16BigEndian}) {
        const std::string marked = Utf16(u"[s]\r\nk=\x4E2D\r\n", encoding);
        const std::string bytes = marked.substr(2);
        EXPECT_EQ(Read(bytes, u"s", u"k"), u"\x4E2D");
        EXPECT_EQ(IniDocument(kLatin, bytes).Bytes(), marked);
        EXPECT_EQ(AfterSet(bytes, u"s", u"j", u"1"), marked + Utf16(u"j=1\r\n", encoding).substr(2));
    }
}

TEST(IniDocumentReading, SecondBytesOfTwoByteCharactersAreNoBrackets) {
    // 83 5D is one character of the page, and so is 83 61, whose second byte is a letter.
    const IniDocument document(kEastAsian, "[a\x83\x5D\x83\x61]\nk\x83\x61=1\n[b \x83\x5D\nk=2");
    const std::u16string name = kEastAsian.DecodeAnsi("a\x83\x5D\x83\x61");
    EXPECT_EQ(document.SectionNames(u""), Names{name});
    EXPECT_EQ(document.Value(name, kEastAsian.DecodeAnsi("K\x83\x61")), u"1");
    EXPECT_EQ(document.Value(name, kEastAsian.DecodeAnsi("k\x83\x41")), u"");
    EXPECT_EQ(document.Value(name, u"k"), u"2");
}

TEST(IniDocumentReading, DamagedAndBinaryInputIsDefined) {
    EXPECT_EQ(Read("\xFF\xFE", u"s", u"k"), u"");
    EXPECT_EQ(Read("\xFF", u"s", u"k"), u"");
    EXPECT_EQ(Read(Utf16(u"[s]\nk=v\n") + "x", u"s", u"k"), u"v");
    EXPECT_EQ(Read(Utf16(u"[s]\nk=v") + "x", u"s", u"k"), u"v");
    EXPECT_EQ(Read("[s]\nk=a\0b\nj\0x=2\n"s, u"s", u"k"), u"a");
    EXPECT_EQ(Read("[s]\nk=a\0b\nj\0x=2\n"s, u"s", u"j"), u"2");
    EXPECT_EQ(Read("[s]\nk=\032v\032\n", u"s", u"k"), u"v");
    std::string noise;
    for (unsigned i = 0; i < 300'000; ++i) {
        noise += static_cast<char>(i * 7919 >> 5);
    }
    EXPECT_EQ(IniDocument(kLatin, noise).Bytes(), noise);
    EXPECT_EQ(Read(std::string(5'000'000, '['), u"s", u"k"), u"");
    EXPECT_EQ(Read(std::string(5'000'000, '\n') + "[s]\nk=v", u"s", u"k"), u"v");
}

TEST(IniDocumentListing, NamesComeInOrderWithTheirSpelling) {
    const IniDocument document(
        kLatin, "[Referance_File_10]\n[x]\n[REFERANCE_FILE_2]\n[referance_file_2]\n[REFERANCE_FILES]\n[]\n");
    EXPECT_EQ(document.SectionNames(u"REFERANCE_FILE"),
              (Names{u"Referance_File_10", u"REFERANCE_FILE_2", u"REFERANCE_FILES"}));
    EXPECT_EQ(document.SectionNames(u"referance_file_1"), Names{u"Referance_File_10"});
    EXPECT_EQ(document.SectionNames(u"").size(), 4U);
    EXPECT_TRUE(document.SectionNames(u"REFERANCE_FILE_100").empty());
    EXPECT_EQ(IniDocument(kLatin, Utf16(u"[\xE9_1]\n")).SectionNames(u"\xC9_"), Names{u"\xE9_1"});
    EXPECT_EQ(IniDocument(kLatin, "[\xE9_1]\n").SectionNames(u"\xC9_"), Names{u"\xE9_1"});
}

TEST(IniDocumentListing, LastIndexIsTheHighestNumber) {
    const auto last = [](const std::string& bytes) { return IniDocument(kLatin, bytes).LastIndex(u"F"); };
    EXPECT_EQ(last(""), 0);
    EXPECT_EQ(last("[F]\n[F_]\n[F_x]\n[F_1x]\n[F1]\n[F_-3]\n[F_+3]\n[F_ 3]\n[G_9]"), 0);
    EXPECT_EQ(last("[F_1]\n[F_3]\n[f_12]\n[F_2]"), 12);
    EXPECT_EQ(last("[F_007]"), 7);
    EXPECT_EQ(last("[F_2147483647]"), 2147483647);
    EXPECT_EQ(last("[F_2147483648]\n[F_99999999999999999999999]\n[F_5]"), 5);
}

TEST(IniDocumentListing, ContentsAreWhatCanBeRead) {
    IniDocument document(kLatin, "x=0\n[b]\nk=\"1\"\nk=2\nj\n[a]\n[B]\nz=1\n");
    document.SetValue(u"b", u"new", u"\n");
    const std::vector<IniSectionText> contents = ContentsOf(document);
    ASSERT_EQ(contents.size(), 2U);
    EXPECT_EQ(contents[0].name, u"b");
    using Values = std::vector<std::pair<std::u16string, std::u16string>>;
    EXPECT_EQ(contents[0].values, (Values{{u"k", u"1"}, {u"j", u""}, {u"new", u"\n"}}));
    EXPECT_EQ(contents[1].name, u"a");
    EXPECT_TRUE(contents[1].values.empty());
}

TEST(IniDocumentWriting, ReplacesNothingButTheValue) {
    EXPECT_EQ(AfterSet("; top\r\n\r\n[s]\n  Key \t=  old \t\r\n\nj=1\r", u"S", u"KEY", u"new"),
              "; top\r\n\r\n[s]\n  Key \t=  new \t\r\n\nj=1\r");
    EXPECT_EQ(AfterSet("[s]\nk=1\nk=2\n[s]\nk=3", u"s", u"k", u"x"), "[s]\nk=x\nk=2\n[s]\nk=3");
    EXPECT_EQ(AfterSet("[s]\nk=old", u"s", u"k", u""), "[s]\nk=");
    EXPECT_EQ(AfterSet("[s]\nk=\nj=2", u"s", u"k", u"v"), "[s]\nk=v\nj=2");
    EXPECT_EQ(AfterSet("[s]\n k \nj=2", u"s", u"k", u"v"), "[s]\n k=v \nj=2");
    EXPECT_EQ(AfterSet("[s]\nk\nj=2", u"s", u"k", u""), "[s]\nk=\nj=2");
}

TEST(IniDocumentWriting, NewKeysComeBehindTheLastOneWithItsLineEnd) {
    EXPECT_EQ(AfterSet("[s]\r\na=1\n\n; about t\n[t]\n", u"s", u"k", u"v"),
              "[s]\r\na=1\nk=v\n\n; about t\n[t]\n");
    EXPECT_EQ(AfterSet("[s]\r\n[t]\n", u"s", u"k", u"v"), "[s]\r\nk=v\r\n[t]\n");
    EXPECT_EQ(AfterSet("[s]\r[t]\n", u"s", u"k", u"v"), "[s]\rk=v\r[t]\n");
    EXPECT_EQ(AfterSet("[s]\na=1", u"s", u"k", u"v"), "[s]\na=1\nk=v");
    EXPECT_EQ(AfterSet("[s]", u"s", u"k", u"v"), "[s]\r\nk=v");
}

TEST(IniDocumentWriting, NewSectionsComeAtTheEnd) {
    EXPECT_EQ(AfterSet("", u"s", u"k", u"v"), "[s]\r\nk=v\r\n");
    EXPECT_EQ(AfterSet("[a]\nb=1\n", u"s", u"k", u"v"), "[a]\nb=1\n[s]\nk=v\n");
    EXPECT_EQ(AfterSet("[a]\nb=1", u"s", u"k", u"v"), "[a]\nb=1\n[s]\nk=v\n");
    EXPECT_EQ(AfterSet("; only this", u"s", u"k", u"v"), "; only this\r\n[s]\r\nk=v\r\n");
    EXPECT_EQ(AfterSet("[a]\r\nb=1\n\n", u"s", u"k", u"v"), "[a]\r\nb=1\n\n[s]\nk=v\n");
    EXPECT_EQ(AfterSet("\xEF\xBB\xBF", u"s", u"k", u"\xE9"), "\xEF\xBB\xBF[s]\r\nk=\xC3\xA9\r\n");
    EXPECT_EQ(AfterSet("\xFF\xFE", u"s", u"k", u"v"), Utf16(u"[s]\r\nk=v\r\n"));
}

TEST(IniDocumentWriting, SettingWhatIsThereChangesNothing) {
    IniDocument document(kLatin, "[s]\nk = 'v'\nj=\\esc:a\\nb\n");
    EXPECT_FALSE(document.SetValue(u"s", u"k", u"v"));
    EXPECT_FALSE(document.SetValue(u"s", u"j", u"a\nb"));
    EXPECT_EQ(document.Bytes(), "[s]\nk = 'v'\nj=\\esc:a\\nb\n");
}

TEST(IniDocumentWriting, NamesThatCannotStandInAFileAreIgnored) {
    IniDocument document(kLatin, "[s]\nk=v\n");
    for (const std::u16string& key : {u""s, u"  "s, u"a=b"s, u";c"s, u"[x"s, u"a\nb"s, u"\xD800"s, u"\0k"s}) {
        EXPECT_FALSE(document.SetValue(u"s", key, u"v"));
    }
    for (const std::u16string& section : {u""s, u" "s, u"a\rb"s, u"\xDC00"s}) {
        EXPECT_FALSE(document.SetValue(section, u"k", u"v"));
    }
    EXPECT_EQ(document.Bytes(), "[s]\nk=v\n");
    EXPECT_TRUE(document.SetValue(u"a]b", u"#c", u"v"));
    EXPECT_EQ(document.Value(u"a]b", u"#c"), u"v");
}

TEST(IniDocumentWriting, AFileKeepsItsEncoding) {
    EXPECT_EQ(AfterSet("[s]\nk=1\n", u"s", u"k", u"\xE9"), "[s]\nk=\xE9\n");
    EXPECT_EQ(AfterSet("[s]\nk=\xC3\xA9\n", u"s", u"k", u"\x4E2D"), "[s]\nk=\xE4\xB8\xAD\n");
    EXPECT_EQ(AfterSet(Utf16(u"[s]\nk=1\n"), u"s", u"k", u"\x4E2D"), Utf16(u"[s]\nk=\x4E2D\n"));
    EXPECT_EQ(AfterSet(Utf16(u"[s]\nk=1\n", IniEncoding::Utf16BigEndian), u"s", u"j", u"\x4E2D"),
              Utf16(u"[s]\nk=1\nj=\x4E2D\n", IniEncoding::Utf16BigEndian));
    EXPECT_EQ(AfterSet(Utf16(u"[s]\nk=1") + "x", u"s", u"j", u"2"), Utf16(u"[s]\nk=1\nj=2"));
}

TEST(IniDocumentWriting, WhatTheCodePageCannotHoldTurnsTheFileIntoUtf16) {
    EXPECT_EQ(AfterSet("; \xE9\r\n[s]\nk=1\n", u"s", u"k", u"\x4E2D"), Utf16(u"; \xE9\r\n[s]\nk=\x4E2D\n"));
    EXPECT_EQ(AfterSet("[s]\nk=1\n", u"s", u"\x4E2D", u"1"), Utf16(u"[s]\nk=1\n\x4E2D=1\n"));
    EXPECT_EQ(AfterSet("", u"s", u"k", u"\x4E2D"), Utf16(u"[s]\r\nk=\x4E2D\r\n"));
}

TEST(IniDocumentWriting, HalfSurrogatePairsNeedNoOtherEncoding) {
    EXPECT_EQ(AfterSet("[s]\nk=\xC3\xA9\n", u"s", u"k", u"a\xD800"), "[s]\nk=\\esc:a\\uD800\n");
}

TEST(IniDocumentWriting, AnsiTextThatLooksLikeUtf8IsNotMistaken) {
    EXPECT_EQ(AfterSet("[s]\nk=1\n", u"s", u"k", u"\xC3\xA9"), Utf16(u"[s]\nk=\xC3\xA9\n"));
    EXPECT_EQ(AfterSet("[s]\nk=\xE9\nj=\xC3\xA9\n", u"s", u"k", u"e"), Utf16(u"[s]\nk=e\nj=\xC3\xA9\n"));
    EXPECT_EQ(AfterRemove("[r]\nx=\xE9\n[s]\nj=\xC3\xA9\n", u"r"), Utf16(u"[s]\nj=\xC3\xA9\n"));
}

TEST(IniDocumentWriting, AnsiTextThatLooksLikeUtf16IsNotMistaken) {
    EXPECT_EQ(AfterRemove("[r]\n[\0]\0"s, u"r"), Utf16(u"[\0]\0"s));
    EXPECT_EQ(AfterRemove("[r]\nk=\xC3\xA9\n[\0]\0"s, u"r"), Utf16(u"[\0]\0"s));
    EXPECT_EQ(AfterSet("\0ab"s, u"s", u"k", u"vv"), Utf16(u"\0ab\r\n[s]\r\nk=vv\r\n"s));
}

TEST(IniDocumentWriting, ACodePageThatIsUtf8StaysUtf8) {
    const Utf8Page page;
    EXPECT_EQ(AfterSet("[s]\nk=1\n", u"s", u"k", u"\x4E2D", page), "[s]\nk=\xE4\xB8\xAD\n");
}

TEST(IniDocumentWriting, NothingGrowsBeyondWhatIsReadAgain) {
    IniDocument document(kLatin, "[s]\nk=1\n");
    EXPECT_FALSE(document.SetValue(u"s", u"k", std::u16string(IniDocument::kMaxBytes / 8, u'x')));
    EXPECT_EQ(document.Value(u"s", u"k"), u"1");
}

TEST(IniDocumentRemoving, TakesTheLinesOfTheSectionOnly) {
    EXPECT_EQ(AfterRemove("x\n[a]\nk=1\n\n[b]\nk=2\n\n[c]\n", u"B"), "x\n[a]\nk=1\n\n[c]\n");
    EXPECT_EQ(AfterRemove("[a]\nk=1\n; mine\n\n; about b\n; more\n[b]\n", u"a"), "; about b\n; more\n[b]\n");
    EXPECT_EQ(AfterRemove("[a]\n; about b\n[b]\n", u"a"), "; about b\n[b]\n");
    EXPECT_EQ(AfterRemove("[a]\nk=1\n[b]\nk=1\n; foot", u"b"), "[a]\nk=1\n");
    EXPECT_EQ(AfterRemove("\xEF\xBB\xBF[a]\n", u"a"), "\xEF\xBB\xBF");
}

TEST(IniDocumentRemoving, TakesEverySectionOfThatName) {
    EXPECT_EQ(AfterRemove("[a]\nk=1\n[b]\n[A]\nk=2\n[a]", u"a"), "[b]\n");
}

TEST(IniDocumentRemoving, OfNothingChangesNothing) {
    IniDocument document(kLatin, "[a]\nk=1\n[]\n");
    EXPECT_FALSE(document.RemoveSection(u"b"));
    EXPECT_FALSE(document.RemoveSection(u""));
    EXPECT_EQ(document.Bytes(), "[a]\nk=1\n[]\n");
}

TEST(IniDocumentRemoving, AddingAfterwardsWorks) {
    IniDocument document(kLatin, "[F_1]\nk=1\n[F_2]\nk=2\n[F_3]\nk=3\n");
    document.RemoveSection(u"F_2");
    EXPECT_EQ(document.LastIndex(u"F"), 3);
    document.SetValue(u"F_4", u"k", u"4");
    document.SetValue(u"F_4", u"j", u"5");
    EXPECT_EQ(document.Bytes(), "[F_1]\nk=1\n[F_3]\nk=3\n[F_4]\nk=4\nj=5\n");
}

} // namespace
} // namespace mxovshare
