// A question with buttons of our own.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <commctrl.h>

namespace viewer {

/// Shows a question. Returns the index of the chosen button, of which the first is the default; -1 when the
/// user closes the question.
int ShowTaskPrompt(HWND owner, const std::wstring& instruction, const std::wstring& content,
                   const std::vector<std::wstring>& buttons, const wchar_t* icon);

/// Asks the user for one of these answers; closing the question counts as `cancelled`.
template <class Answer>
[[nodiscard]] Answer AskUser(HWND owner, const std::wstring& instruction, const std::wstring& content,
                             const std::vector<std::pair<std::wstring, Answer>>& answers, Answer cancelled,
                             const wchar_t* icon = TD_WARNING_ICON) {
    std::vector<std::wstring> buttons;
    buttons.reserve(answers.size());
    for (const auto& [text, answer] : answers) {
        buttons.push_back(text);
    }
    const int chosen = ShowTaskPrompt(owner, instruction, content, buttons, icon);
    return chosen < 0 ? cancelled : answers[static_cast<std::size_t>(chosen)].second;
}

} // namespace viewer
