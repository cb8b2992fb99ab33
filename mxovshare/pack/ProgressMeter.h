// Progress of an operation on a package.
#pragma once

#include "mxovpackage.h"

#include <cstdint>
#include <string>

namespace mxovshare {

/// Thrown after the caller cancelled.
struct Cancelled {};

/// Counts finished bytes, reports them to a listener and throws Cancelled once the listener cancels.
class ProgressMeter {
public:
    /// `listener` may be null; `total` is in bytes.
    ProgressMeter(PackageProgress* listener, std::uint64_t total) : m_listener(listener), m_total(total) {}

    void Begin(std::wstring name);
    void Advance(std::uint64_t bytes);
    /// Reports the progress so far once more, so that waiting can be cancelled.
    void Report();

private:
    PackageProgress* m_listener;
    std::uint64_t m_total;
    std::uint64_t m_done = 0;
    std::wstring m_name;
};

} // namespace mxovshare
