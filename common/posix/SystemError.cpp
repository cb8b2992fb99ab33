#include "common/SystemError.h"

#include "common/Utf8.h"

#include <cerrno>
#include <cstring>

namespace common {

std::wstring SystemErrorText(DWORD error) {
    char buffer[256] = "";
    return FromUtf8(strerror_r(static_cast<int>(error), buffer, sizeof buffer));
}

DWORD LastError() noexcept {
    return static_cast<DWORD>(errno);
}

} // namespace common
