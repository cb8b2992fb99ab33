// Times and sizes for sentences, in the user's form. Times are local and without seconds.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace viewer {

/// The date and the clock of a time in UTC; empty when it is none.
[[nodiscard]] std::wstring LocalTimeText(const FILETIME& time);

/// The same with the date as short as it is written.
[[nodiscard]] std::wstring ShortLocalTimeText(const FILETIME& time);

/// The clock alone.
[[nodiscard]] std::wstring LocalClockText(const FILETIME& time);

/// Such as "48.2 KB".
[[nodiscard]] std::wstring ByteSizeText(std::uint64_t bytes);

} // namespace viewer
