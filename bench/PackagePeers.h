// Other archivers at the same work.
#pragma once

#include "PackageFolder.h"

#include <optional>
#include <string>

namespace peers {

/// Writes a cabinet (MSZIP) by the platform's own functions; false when they fail.
bool WriteCabinet(const PackageFolder& folder, const std::wstring& target);

/// Runs a command line of the Unix system under Wine in the folder, with "$TARGET" for the file to write, and
/// returns the milliseconds it took; nothing when there is no such system or the command failed.
std::optional<double> RunUnix(const PackageFolder& folder, const std::wstring& target,
                              const std::string& command);

} // namespace peers
