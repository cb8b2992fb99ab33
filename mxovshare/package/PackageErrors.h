// How the failures of operations on packages become results.
#pragma once

#include "mxovpackage.h"

#include <string>

namespace mxovshare {

/// Turns the exception that is being handled into a result. The message of a PackageError starts with `file`;
/// for want of memory it is empty.
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
