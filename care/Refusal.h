// Why an edit of a package is refused.
#pragma once

#include <string>

namespace care {

/// Thrown when a package cannot be edited as asked; the message is one line.
struct Refusal {
    std::wstring message;
};

} // namespace care
