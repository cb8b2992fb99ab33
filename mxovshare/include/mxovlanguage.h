// The language of the texts that the host's library publishes, for hosts.
#pragma once

#include "mxovshare.h"

namespace mxovshare {

/// Makes `name`, such as "German", the current language: `OVApplication::mxLanguageName` becomes the name and
/// `OVApplication::hMXOVResInstance` the module that holds its texts. Called on the thread of the user
/// interface, before controls are made: a control shows the texts that were current when it loaded them.
/// False when there are no texts in that language and the English ones serve instead; or when memory is
/// short, and then nothing changes. A module handed out earlier is no longer valid.
MXOVSHARE_API bool UseLanguage(const std::wstring& name) noexcept;

} // namespace mxovshare
