// Which documents are texts, by their names.
#pragma once

#include "document/TextLines.h"

#include <optional>
#include <string>

namespace viewer {

/// How the text of a file of this name is tinted; none for files that are no texts.
[[nodiscard]] std::optional<TextKind> KindOfText(const std::wstring& name);

} // namespace viewer
