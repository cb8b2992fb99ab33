#include "care/check/FindingForms.h"

#include <algorithm>
#include <iterator>

namespace care {

namespace {

struct FindingForm {
    FindingText text;
    Severity severity;
    const wchar_t* code;
    const wchar_t* message;
    const wchar_t* cure;
};

constexpr wchar_t kRelink[] = L"relink or remove it";

constexpr FindingForm kForms[] = {
    {FindingText::Damaged, Severity::Error, finding::kDamaged, L"%1", L""},
    {FindingText::LeavesFolder, Severity::Error, finding::kLeavesFolder,
     L"%1 \"%2\" leaves the package folder", kRelink},
    {FindingText::OtherComputer, Severity::Error, finding::kOtherComputer,
     L"%1 \"%2\" leads to another computer", kRelink},
    {FindingText::LinkMissing, Severity::Warning, finding::kLinkMissing,
     L"linked document \"%1\" does not exist", kRelink},
    {FindingText::LinkUnanswered, Severity::Warning, finding::kLinkMissing,
     L"linked document \"%1\" cannot be looked up: its computer does not answer", kRelink},
    {FindingText::CopyMissing, Severity::Warning, finding::kCopyMissing,
     L"document \"%1\" is not in the package", L"add or remove it"},
    {FindingText::PreviewMissing, Severity::Warning, finding::kPreviewMissing,
     L"preview \"%1\" is not in the package", L"set Thumbnail"},
    {FindingText::NoInformation, Severity::Warning, finding::kNoInformation,
     L"the package holds no information file (mxinfo.ini), or an empty one", L"set MaxtlreVersion"},
    {FindingText::LinkNewer, Severity::Warning, finding::kLinkNewer,
     L"linked document \"%1\" was changed after %2", L"check it and set its date"},
    {FindingText::PersonalFolder, Severity::Warning, finding::kPersonalFolder,
     L"linked document \"%1\" is in a personal or temporary folder", L"copy it into the package"},
    {FindingText::NotShown, Severity::Warning, finding::kNotShown, L"file \"%1\" is not shown",
     L"add it as a document or leave it out"},
    {FindingText::Shared, Severity::Warning, finding::kShared, L"%1 and %2 both show \"%3\"",
     L"remove one of them"},
    {FindingText::HistoryOrder, Severity::Warning, finding::kHistoryOrder, L"%1 of %2 follows an entry of %3",
     L""},
    {FindingText::Future, Severity::Warning, finding::kFuture, L"%1 is in the future: %2", L"set it"},
    {FindingText::OldVersion, Severity::Note, finding::kOldVersion,
     L"the version \"%1\" is before 2021: additional documents are not shown", L"set MaxtlreVersion"},
};

const FindingForm& FormOf(FindingText text) {
    return *std::ranges::find(kForms, text, &FindingForm::text);
}

} // namespace

Finding MakeFinding(FindingText text, FindingPlace place, std::wstring document,
                    std::vector<std::wstring> inserts) {
    const FindingForm& form = FormOf(text);
    return {.severity = form.severity,
            .code = form.code,
            .section = std::move(place.section),
            .key = std::move(place.key),
            .document = std::move(document),
            .text = text,
            .inserts = std::move(inserts)};
}

Finding DamageOf(const std::wstring& reason) {
    return MakeFinding(FindingText::Damaged, {}, {}, {reason});
}

std::wstring EnglishMessage(const Finding& finding) {
    std::wstring message;
    const std::wstring_view form = FormOf(finding.text).message;
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] == L'%' && i + 1 < form.size()) {
            message += finding.inserts.at(static_cast<std::size_t>(form[++i] - L'1'));
        } else {
            message += form[i];
        }
    }
    return message;
}

std::wstring EnglishCure(const Finding& finding) {
    return FormOf(finding.text).cure;
}

} // namespace care
