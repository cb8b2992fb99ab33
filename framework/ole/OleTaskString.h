// Texts that a client frees.
#pragma once

#include "core/Types.h"

#include <objbase.h>

namespace framework {

/// A copy that the receiver frees with CoTaskMemFree; null when memory is out.
[[nodiscard]] inline LPOLESTR OleTaskString(LPCOLESTR text) noexcept {
    const size_t bytes = (::lstrlen(text) + size_t{1}) * sizeof(OLECHAR);
    auto* copy = static_cast<LPOLESTR>(::CoTaskMemAlloc(bytes));
    if (copy) {
        ::CopyMemory(copy, text, bytes);
    }
    return copy;
}

} // namespace framework
