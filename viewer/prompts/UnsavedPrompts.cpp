#include "prompts/UnsavedPrompts.h"

#include "package/Paths.h"
#include "package/ValueText.h"
#include "prompts/TaskPrompt.h"

namespace viewer {

namespace {

// Their names, each with the text for its kind.
std::vector<std::wstring> LinesOf(const std::vector<FileChange>& changes, const wchar_t* added,
                                  const wchar_t* removed) {
    std::vector<std::wstring> lines;
    lines.reserve(changes.size());
    for (const FileChange& change : changes) {
        lines.push_back(change.name + TextFor(change.kind, L"", added, removed));
    }
    return lines;
}

// The beginning of a sentence about `count` documents.
std::wstring Documents(const std::wstring& packageFile, std::size_t count, const wchar_t* verbForOne,
                       const wchar_t* verbForMany) {
    return (count == 1 ? L"A document of " : L"Documents of ") + FileName(packageFile) + L" " +
           (count == 1 ? verbForOne : verbForMany);
}

} // namespace

RecoveryAnswer AskToRecover(HWND owner, const std::wstring& packageFile, const FILETIME& changed) {
    using enum RecoveryAnswer;
    return AskUser<RecoveryAnswer>(
        owner, L"There are unsaved changes to " + FileName(packageFile),
        L"The viewer did not end properly. Your changes, last made on " + LocalTimeText(changed) +
            L", are not in the package file:\n\n" + packageFile + L"\n\nDo you want to continue with them?",
        {{L"&Continue", Continue}, {L"&Discard", Discard}, {L"Ask &later", Later}}, Later);
}

std::wstring ShortList(const std::vector<std::wstring>& lines) {
    constexpr std::size_t kMostLines = 10;
    // The line of the rest replaces at least two.
    const std::size_t shown = lines.size() > kMostLines ? kMostLines - 1 : lines.size();
    std::wstring list;
    for (std::size_t i = 0; i < shown; ++i) {
        list += lines[i] + L"\n";
    }
    if (shown < lines.size()) {
        list += L"and " + std::to_wstring(lines.size() - shown) + L" more\n";
    }
    return list;
}

std::wstring ListOfChanges(const std::vector<FileChange>& changes) {
    return ShortList(LinesOf(changes, L" (new)", L" (removed)"));
}

ChangesAnswer AskAboutChanges(HWND owner, const std::wstring& packageFile,
                              const std::vector<FileChange>& changes, bool declined) {
    using enum ChangesAnswer;
    const std::wstring question =
        declined ? L"Do you want to save the package after all, with your other changes too?"
                 : L"Do you want to save the package with these changes?";
    return AskUser<ChangesAnswer>(
        owner, Documents(packageFile, changes.size(), L"was", L"were") + L" changed by another program",
        ListOfChanges(changes) + L"\n" + question,
        {{L"&Save", Save}, {L"&Discard", Discard}, {L"&Go on working", GoOn}}, GoOn);
}

void ShowComparison(HWND owner, const std::wstring& packageFile, const std::vector<FileChange>& changes) {
    const std::wstring content = changes.empty()
                                     ? L"Only the history or the descriptions differ."
                                     : ShortList(LinesOf(changes, L" (only here)", L" (only in the file)"));
    ShowTaskPrompt(owner, L"What is open here differs from the file " + FileName(packageFile), content,
                   {L"&Close"}, TD_INFORMATION_ICON);
}

OpenAnswer AskAboutOpenDocuments(HWND owner, const std::wstring& packageFile,
                                 const std::vector<std::wstring>& names) {
    using enum OpenAnswer;
    return AskUser<OpenAnswer>(
        owner, Documents(packageFile, names.size(), L"is", L"are") + L" still open in another program",
        ShortList(names) + L"\nSave and close it there first, then try again. What is saved there "
                           L"after the package is closed is lost.",
        {{L"&Try again", TryAgain}, {L"&Close anyway", Close}, {L"&Go on working", GoOn}}, GoOn);
}

FailedSaveAnswer AskAboutFailedSave(HWND owner, const std::wstring& packageFile) {
    using enum FailedSaveAnswer;
    return AskUser<FailedSaveAnswer>(
        owner, L"Your changes to " + FileName(packageFile) + L" are not saved",
        L"You can save them in another place, or keep them: the viewer then offers them at its "
        L"next start.",
        {{L"&Go on working", GoOn},
         {L"Save a &copy...", SaveCopy},
         {L"&Keep for later", Keep},
         {L"&Discard", Discard}},
        GoOn);
}

} // namespace viewer
