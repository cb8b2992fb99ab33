#include "text/UpperCase.h"

#include "common/UpperCase.h"

namespace mxovshare {

char16_t UpperCase(char16_t unit) noexcept {
    return common::UpperCase(unit);
}

} // namespace mxovshare
