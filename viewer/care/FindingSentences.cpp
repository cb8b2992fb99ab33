#include "care/FindingSentences.h"

#include "texts/Texts.h"

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

using care::FindingText;

constexpr UINT kNoCure = 0;

struct SentenceNumbers {
    FindingText text;
    UINT message;
    UINT cure;
};

constexpr SentenceNumbers kSentences[] = {
    {FindingText::LeavesFolder, IDS_FOUND_LEAVES_FOLDER, IDS_DO_RELINK},
    {FindingText::OtherComputer, IDS_FOUND_OTHER_COMPUTER, IDS_DO_RELINK},
    {FindingText::LinkMissing, IDS_FOUND_LINK_MISSING, IDS_DO_RELINK},
    {FindingText::LinkUnanswered, IDS_FOUND_LINK_UNANSWERED, IDS_DO_RELINK},
    {FindingText::CopyMissing, IDS_FOUND_COPY_MISSING, IDS_DO_ADD},
    {FindingText::PreviewMissing, IDS_FOUND_PREVIEW_MISSING, IDS_DO_FIND_PREVIEW},
    {FindingText::NoInformation, IDS_FOUND_NO_INFORMATION, IDS_DO_SET_VERSION},
    {FindingText::LinkNewer, IDS_FOUND_LINK_NEWER, IDS_DO_SET_DATE},
    {FindingText::PersonalFolder, IDS_FOUND_PERSONAL_FOLDER, IDS_DO_COPY},
    {FindingText::NotShown, IDS_FOUND_NOT_SHOWN, IDS_DO_ATTACH},
    {FindingText::Shared, IDS_FOUND_SHARED, IDS_DO_REMOVE_ONE},
    {FindingText::HistoryOrder, IDS_FOUND_HISTORY_ORDER, kNoCure},
    {FindingText::Future, IDS_FOUND_FUTURE, IDS_DO_CORRECT},
    {FindingText::OldVersion, IDS_FOUND_OLD_VERSION, IDS_DO_SET_VERSION},
};

const SentenceNumbers* NumbersOf(const care::Finding& finding) {
    return std::ranges::find(kSentences, finding.text, &SentenceNumbers::text);
}

std::wstring InsertOf(const care::Finding& finding, std::size_t number) {
    return number < finding.inserts.size() ? finding.inserts[number] : std::wstring();
}

} // namespace

std::wstring FindingSentence(const care::Finding& finding) {
    const SentenceNumbers* numbers = NumbersOf(finding);
    return numbers == std::end(kSentences)
               ? care::EnglishMessage(finding)
               : Text(numbers->message, {InsertOf(finding, 0), InsertOf(finding, 1), InsertOf(finding, 2)});
}

std::wstring CureSentence(const care::Finding& finding) {
    const SentenceNumbers* numbers = NumbersOf(finding);
    return numbers == std::end(kSentences) || numbers->cure == kNoCure ? std::wstring() : Text(numbers->cure);
}

} // namespace viewer
