// How the container's platform-free code tells what is wrong with a package.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace mxovshare {

/// Something is wrong with the package in hand. The text is one line of UTF-8 without the package's own name.
class PackageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// `name` between quotes, fit for one line: what cannot be printed stands as "\xNN", an overlong name is cut.
std::string QuoteName(std::string_view name);

/// The error that refuses or fails one entry.
PackageError EntryError(std::string_view name, std::string_view reason);

} // namespace mxovshare
