// What the library itself has to tell the user.
#pragma once

#include <string>

namespace mxovshare {

using NoticeSink = void (*)(const std::wstring& text);

/// Shows `text` to the user, in a message box over the thread's active window.
void TellUser(const std::wstring& text);

/// Sends what would be shown to `sink` instead; nullptr brings the message box back. Gives the previous one.
NoticeSink SetNoticeSink(NoticeSink sink);

} // namespace mxovshare
