// How the failures of operations on packages become results.
#pragma once

#include "mxovpackage.h"

#include <functional>
#include <string>

namespace mxovshare {

/// Runs `work` and returns what it throws as a result. The message of a PackageError starts with `file`.
PackageResult RunForResult(const std::wstring& file, const std::function<void()>& work) noexcept;

} // namespace mxovshare
