// What administrators decide for the programs of the product. Only Windows has a place for it.
#pragma once

namespace common {

/// Whether packages that hold programs are refused.
[[nodiscard]] inline bool IsRefusingPrograms() {
    return false;
}

} // namespace common
