// What every operation on a package shares: how it fails, is cancelled, and tells its progress.
#pragma once

#include "files/FileFailure.h"
#include "mxovpackage.h"

#include <functional>
#include <string>
#include <string_view>

namespace mxovshare {

/// Thrown after the caller cancelled.
struct Cancelled {};

std::wstring FromUtf8(std::string_view text);

/// Runs `work` and turns whatever it throws into a result. A PackageError is told about `file`.
PackageResult RunPackageWork(const std::wstring& file, const std::function<void()>& work) noexcept;

/// How many processors this process may use.
unsigned ProcessorCount();

/// Counts finished bytes and throws Cancelled as soon as the listener wants no more.
class ProgressMeter {
public:
    ProgressMeter(PackageProgress* listener, std::uint64_t total) : m_listener(listener), m_total(total) {}

    void Begin(std::wstring name);
    void Advance(std::uint64_t bytes);
    /// Asks the listener again without any progress.
    void Tell();

private:
    PackageProgress* m_listener;
    std::uint64_t m_total;
    std::uint64_t m_done = 0;
    std::wstring m_name;
};

} // namespace mxovshare
