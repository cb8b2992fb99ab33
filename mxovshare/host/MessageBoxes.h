// Message boxes of this library; tests can redirect them.
#pragma once

#include <string>

namespace mxovshare {

using ErrorSink = void (*)(const wchar_t* text);
using QuestionSink = bool (*)(const std::wstring& text);

/// Shows an error in a message box over the thread's active window. Allocates nothing.
void ShowError(const wchar_t* text) noexcept;

/// Asks a yes-or-no question; "No" is the default button.
bool AskYesNo(const std::wstring& text);

/// Redirects errors to `sink`, nullptr restores the message box. Returns the previous sink.
ErrorSink SetErrorSink(ErrorSink sink);

/// Redirects questions in the same way.
QuestionSink SetQuestionSink(QuestionSink sink);

} // namespace mxovshare
