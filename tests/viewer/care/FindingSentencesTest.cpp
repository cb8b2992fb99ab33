#include "care/FindingSentences.h"

#include "package/Sentence.h"
#include "texts/Texts.h"

#include <gtest/gtest.h>

#include <set>

using namespace viewer;
using care::FindingText;

namespace {

constexpr FindingText kTexts[] = {
    FindingText::LeavesFolder,   FindingText::OtherComputer, FindingText::LinkMissing,
    FindingText::LinkUnanswered, FindingText::CopyMissing,   FindingText::PreviewMissing,
    FindingText::NoInformation,  FindingText::LinkNewer,     FindingText::PersonalFolder,
    FindingText::NotShown,       FindingText::Shared,        FindingText::HistoryOrder,
    FindingText::Future,         FindingText::OldVersion,
};
const std::vector<std::wstring> kInserts = {L"<first>", L"<second>", L"<third>"};

HMODULE Delivered() {
    return GetModuleHandleW(L"mxovshare.dll");
}

care::Finding FindingOf(FindingText text) {
    care::Finding finding;
    finding.text = text;
    finding.inserts = kInserts;
    return finding;
}

std::set<std::wstring> InsertsIn(const std::wstring& sentence) {
    std::set<std::wstring> found;
    for (const std::wstring& insert : kInserts) {
        if (sentence.find(insert) != std::wstring::npos) {
            found.insert(insert);
        }
    }
    return found;
}

class FindingSentences : public testing::Test {
protected:
    void TearDown() override { UseTexts(L"English", Delivered()); }
};

} // namespace

TEST_F(FindingSentences, AreThoseOfTheCommandLineInEnglish) {
    for (const FindingText text : kTexts) {
        const care::Finding finding = FindingOf(text);
        EXPECT_EQ(FindingSentence(finding), Sentence(care::EnglishMessage(finding)));
        EXPECT_EQ(CureSentence(finding).empty(), care::EnglishCure(finding).empty());
    }
    EXPECT_EQ(CureSentence(FindingOf(FindingText::LinkMissing)), L"Relink or remove it.");
}

TEST_F(FindingSentences, AreTranslatedWithAllTheirInserts) {
    for (const wchar_t* language : {L"German", L"French", L"Japanese", L"Portuguese"}) {
        UseTexts(language, Delivered());
        std::set<std::wstring> sentences;
        for (const FindingText text : kTexts) {
            const care::Finding finding = FindingOf(text);
            const std::wstring english = Sentence(care::EnglishMessage(finding));
            const std::wstring sentence = FindingSentence(finding);
            EXPECT_NE(sentence, english) << language;
            EXPECT_EQ(InsertsIn(sentence), InsertsIn(english)) << language << " " << sentence.c_str();
            EXPECT_EQ(CureSentence(finding).empty(), care::EnglishCure(finding).empty()) << language;
            sentences.insert(sentence);
        }
        EXPECT_EQ(sentences.size(), std::size(kTexts)) << language;
    }
}

TEST_F(FindingSentences, DamageIsReportedInTheWordsOfItsReader) {
    care::Finding damage = care::DamageOf(L"the end is missing");
    EXPECT_EQ(FindingSentence(damage), L"the end is missing");
    EXPECT_EQ(CureSentence(damage), L"");
}
