// The types of the Windows interface that declarations of this project name, where there is no Windows. None
// of its functions is declared.
#pragma once

#include <cstdint>

using WORD = std::uint16_t;
using DWORD = std::uint32_t; ///< as an error: a number of <cerrno>
using HANDLE = int;          ///< a descriptor of an open file
using HINSTANCE = void*;

/// In 100 nanoseconds since 1601, UTC.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

inline constexpr DWORD ERROR_SUCCESS = 0;
