// How the failures of operations on packages become results.
#pragma once

#include "mxovpackage.h"

#include <string>

namespace mxovshare {

/// Converts the current exception to a result. The message of a PackageError starts with `file`; it is empty
/// after std::bad_alloc.
PackageResult ResultOfException(const std::wstring& file) noexcept;

/// Runs `work` and returns what it throws as a result. Allocates nothing on success.
template <class Work>
PackageResult RunForResult(const std::wstring& file, Work work) noexcept {
    try {
        work();
    } catch (...) {
        return ResultOfException(file);
    }
    PackageResult done;
    done.ok = true;
    return done;
}

} // namespace mxovshare
