#include "window/UnsavedPrompts.h"

#include "package/Paths.h"

#include <commctrl.h>

#include <iterator>

namespace viewer {

namespace {

constexpr int kFirstAnswer = 100;

// Returns the index of the chosen button, or `cancelled` when the user closes the prompt.
template <std::size_t Count>
int Ask(HWND owner, const std::wstring& instruction, const std::wstring& content,
        const wchar_t* const (&answers)[Count], int cancelled) {
    TASKDIALOG_BUTTON buttons[Count] = {};
    for (std::size_t i = 0; i < Count; ++i) {
        buttons[i] = {kFirstAnswer + static_cast<int>(i), answers[i]};
    }
    TASKDIALOGCONFIG question = {};
    question.cbSize = sizeof question;
    question.hwndParent = owner;
    question.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW;
    question.pszWindowTitle = L"MXOV Viewer";
    question.pszMainIcon = TD_WARNING_ICON;
    question.pszMainInstruction = instruction.c_str();
    question.pszContent = content.c_str();
    question.cButtons = Count;
    question.pButtons = buttons;
    question.nDefaultButton = kFirstAnswer;
    int chosen = 0;
    if (FAILED(TaskDialogIndirect(&question, &chosen, nullptr, nullptr)) || chosen < kFirstAnswer) {
        return cancelled;
    }
    return chosen - kFirstAnswer;
}

std::wstring LocalTimeText(const FILETIME& time) {
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    wchar_t day[64] = L"";
    wchar_t clock[64] = L"";
    if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
        return {};
    }
    GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_LONGDATE, &local, nullptr, day, ARRAYSIZE(day), nullptr);
    GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &local, nullptr, clock, ARRAYSIZE(clock));
    return std::wstring(day) + L", " + clock;
}

std::wstring Remark(FileChangeKind kind) {
    switch (kind) {
    case FileChangeKind::Added:
        return L" (new)";
    case FileChangeKind::Removed:
        return L" (removed)";
    default:
        return {};
    }
}

// The beginning of a sentence about `count` documents.
std::wstring Documents(const std::wstring& packageFile, std::size_t count, const wchar_t* verbForOne,
                       const wchar_t* verbForMany) {
    return (count == 1 ? L"A document of " : L"Documents of ") + FileName(packageFile) + L" " +
           (count == 1 ? verbForOne : verbForMany);
}

} // namespace

RecoveryAnswer AskToRecover(HWND owner, const std::wstring& packageFile, const FILETIME& changed) {
    const wchar_t* const answers[] = {L"&Continue", L"&Discard", L"Ask &later"};
    constexpr RecoveryAnswer kMeaning[] = {RecoveryAnswer::Continue, RecoveryAnswer::Discard,
                                           RecoveryAnswer::Later};
    return kMeaning[Ask(owner, L"There are unsaved changes to " + FileName(packageFile),
                        L"The viewer did not end properly. Your changes, last made on " +
                            LocalTimeText(changed) + L", are not in the package file:\n\n" + packageFile +
                            L"\n\nDo you want to continue with them?",
                        answers, 2)];
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
    std::vector<std::wstring> lines;
    lines.reserve(changes.size());
    for (const FileChange& change : changes) {
        lines.push_back(change.name + Remark(change.kind));
    }
    return ShortList(lines);
}

ChangesAnswer AskAboutChanges(HWND owner, const std::wstring& packageFile,
                              const std::vector<FileChange>& changes, bool declined) {
    const wchar_t* const answers[] = {L"&Save", L"&Discard", L"&Go on working"};
    constexpr ChangesAnswer kMeaning[] = {ChangesAnswer::Save, ChangesAnswer::Discard, ChangesAnswer::GoOn};
    const std::wstring question =
        declined ? L"Do you want to save the package after all, with your other changes too?"
                 : L"Do you want to save the package with these changes?";
    return kMeaning[Ask(
        owner, Documents(packageFile, changes.size(), L"was", L"were") + L" changed by another program",
        ListOfChanges(changes) + L"\n" + question, answers, 2)];
}

OpenAnswer AskAboutOpenDocuments(HWND owner, const std::wstring& packageFile,
                                 const std::vector<std::wstring>& names) {
    const wchar_t* const answers[] = {L"&Try again", L"&Close anyway", L"&Go on working"};
    constexpr OpenAnswer kMeaning[] = {OpenAnswer::TryAgain, OpenAnswer::Close, OpenAnswer::GoOn};
    return kMeaning[Ask(
        owner, Documents(packageFile, names.size(), L"is", L"are") + L" still open in another program",
        ShortList(names) + L"\nSave and close it there first, then try again. What is saved there "
                           L"after the package is closed is lost.",
        answers, 2)];
}

FailedSaveAnswer AskAboutFailedSave(HWND owner, const std::wstring& packageFile) {
    const wchar_t* const answers[] = {L"&Go on working", L"Save a &copy...", L"&Keep for later", L"&Discard"};
    constexpr FailedSaveAnswer kMeaning[] = {FailedSaveAnswer::GoOn, FailedSaveAnswer::SaveCopy,
                                             FailedSaveAnswer::Keep, FailedSaveAnswer::Discard};
    return kMeaning[Ask(
        owner, L"Your changes to " + FileName(packageFile) + L" are not saved",
        L"You can save them in another place, or keep them: the viewer then offers them at its "
        L"next start.",
        answers, 0)];
}

} // namespace viewer
