#include "prompts/NoteDialog.h"

#include "package/Paths.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Window.h"

namespace viewer {

namespace {

constexpr int kMostNote = 1000; // characters

struct Note {
    std::wstring question;
    std::wstring title = Text(IDS_NOTE_TITLE);
    std::wstring save = Text(IDS_SAVE);
    std::wstring cancel = Text(IDS_CANCEL);
    std::wstring text = {}; // that the user writes
};

std::wstring TextOf(HWND field) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(field)), L'\0');
    GetWindowTextW(field, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

void Prepare(HWND dialog, const Note& note) {
    CentreOn(dialog, GetParent(dialog));
    ShowFocusInDialog(dialog);
    SetWindowTextW(dialog, note.title.c_str());
    SetDlgItemTextW(dialog, IDOK, note.save.c_str());
    SetDlgItemTextW(dialog, IDCANCEL, note.cancel.c_str());
    SetDlgItemTextW(dialog, IDC_NOTE_QUESTION, note.question.c_str());
    SendDlgItemMessageW(dialog, IDC_NOTE_TEXT, EM_SETLIMITTEXT, kMostNote, 0);
}

INT_PTR CALLBACK NoteProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        Prepare(dialog, *reinterpret_cast<const Note*>(lParam));
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) {
        return FALSE;
    }
    try {
        reinterpret_cast<Note*>(GetWindowLongPtrW(dialog, DWLP_USER))->text =
            TextOf(GetDlgItem(dialog, IDC_NOTE_TEXT));
    } catch (...) {
        return TRUE; // the dialog stays; there is no memory for the text
    }
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

} // namespace

std::optional<std::wstring> AskForNote(HWND owner, const std::wstring& packageFile) {
    Note note = {Text(IDS_NOTE_QUESTION, {FileName(packageFile)})};
    const INT_PTR answer = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_NOTE), owner,
                                           NoteProcedure, reinterpret_cast<LPARAM>(&note));
    return answer == IDOK ? std::optional(std::move(note.text)) : std::nullopt;
}

} // namespace viewer
