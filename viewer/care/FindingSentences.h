// Findings in the language of the viewer.
#pragma once

#include <care/check/Findings.h>

#include <string>

namespace viewer {

/// What was found, as a sentence.
[[nodiscard]] std::wstring FindingSentence(const care::Finding& finding);

/// What to do about it, as a sentence; empty when nothing is known.
[[nodiscard]] std::wstring CureSentence(const care::Finding& finding);

} // namespace viewer
