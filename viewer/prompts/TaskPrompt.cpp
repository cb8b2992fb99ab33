#include "prompts/TaskPrompt.h"

namespace viewer {

int ShowTaskPrompt(HWND owner, const std::wstring& instruction, const std::wstring& content,
                   const std::vector<std::wstring>& buttons, const wchar_t* icon) {
    constexpr int kFirstButton = 100;
    std::vector<TASKDIALOG_BUTTON> described;
    described.reserve(buttons.size());
    for (const std::wstring& text : buttons) {
        described.push_back({kFirstButton + static_cast<int>(described.size()), text.c_str()});
    }
    TASKDIALOGCONFIG prompt = {};
    prompt.cbSize = sizeof prompt;
    prompt.hwndParent = owner;
    prompt.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW;
    prompt.pszWindowTitle = L"MXOV Viewer";
    prompt.pszMainIcon = icon;
    prompt.pszMainInstruction = instruction.c_str();
    prompt.pszContent = content.c_str();
    prompt.cButtons = static_cast<UINT>(described.size());
    prompt.pButtons = described.data();
    prompt.nDefaultButton = kFirstButton;
    int chosen = 0;
    if (FAILED(TaskDialogIndirect(&prompt, &chosen, nullptr, nullptr)) || chosen < kFirstButton) {
        return -1;
    }
    return chosen - kFirstButton;
}

} // namespace viewer
