// What the library itself has to tell the user.
#pragma once

#include <string>

namespace mxovshare {

using NoticeSink = void (*)(const std::wstring& text);

/// Shows `text` to the user, in a message box over the thread's active window.
void TellUser(const std::wstring& text);

/// Asks the user a question that is answered with Yes or No, No being the cautious answer.
bool AskUser(const std::wstring& text);

using QuestionSink = bool (*)(const std::wstring& text);

/// Sends questions to `sink` instead; nullptr brings the message box back. Gives the previous one.
QuestionSink SetQuestionSink(QuestionSink sink);

/// Sends what would be shown to `sink` instead; nullptr brings the message box back. Gives the previous one.
NoticeSink SetNoticeSink(NoticeSink sink);

} // namespace mxovshare
