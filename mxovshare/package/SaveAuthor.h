// Who saves, and when.
#pragma once

#include <string>

namespace mxovshare {

/// The local time now, as entries of the history have it.
std::wstring LocalTimeText();

/// The name of this user; empty when there is none.
std::wstring UserName();

} // namespace mxovshare
