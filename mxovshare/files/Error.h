// Base of the errors that this library throws.
#pragma once

#include <stdexcept>

namespace mxovshare {

/// An operation failed. what() is one line of UTF-8.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace mxovshare
