// What is wrong with a package.
#pragma once

#include "files/Error.h"

#include <string>
#include <string_view>

namespace mxovshare {

/// A package is damaged or refused. The text does not name the package.
class PackageError : public Error {
public:
    using Error::Error;
};

/// `name` in quotes on one line: unprintable bytes become "\xNN", a long name is cut.
std::string QuoteName(std::string_view name);

/// The error of one entry.
PackageError EntryError(std::string_view name, std::string_view reason);

} // namespace mxovshare
