// Names of sections and keys, which compare without regard to case.
#pragma once

#include "text/TextPlatform.h"

#include <string>
#include <string_view>

namespace mxovshare {

/// The form in which names compare: in upper case and without blanks at either end.
std::u16string FoldName(std::u16string_view name, const TextPlatform& platform);

/// A beginning of names in that form, with its blanks.
std::u16string FoldPrefix(std::u16string_view prefix, const TextPlatform& platform);

} // namespace mxovshare
