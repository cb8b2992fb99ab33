// How operations on packages fail, and how their failures become results.
#pragma once

#include "files/FileFailure.h"
#include "mxovpackage.h"

#include <functional>
#include <string>
#include <string_view>

namespace mxovshare {

/// Thrown after the caller cancelled.
struct Cancelled {};

std::wstring FromUtf8(std::string_view text);

/// Runs `work` and returns what it throws as a result. The message of a PackageError starts with `file`.
PackageResult RunForResult(const std::wstring& file, const std::function<void()>& work) noexcept;

} // namespace mxovshare
