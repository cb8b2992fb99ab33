// How work on the store of versions ended.
#pragma once

#include "mxovpackage.h"

#include <utility>

namespace viewer {

[[nodiscard]] inline mxovshare::PackageResult Succeeded() {
    return {.ok = true, .cancelled = false, .message = {}};
}

[[nodiscard]] inline mxovshare::PackageResult FailedBecause(std::wstring message) {
    return {.ok = false, .cancelled = false, .message = std::move(message)};
}

} // namespace viewer
