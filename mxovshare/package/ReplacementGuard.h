// Asking before a save overwrites what others changed.
#pragma once

#include <string>

namespace mxovshare {

/// Asks the user before a save replaces a package file that others changed.
class ReplacementGuard {
public:
    /// Expects the state of `file` that `folder` was unpacked from or saved to, or its present state if this
    /// process never did either.
    ReplacementGuard(const std::wstring& folder, const std::wstring& file);

    /// Asks when the file exists in a state that is neither expected nor was confirmed before. Throws
    /// Cancelled when the user declines.
    void Confirm();

private:
    std::wstring m_file;
    std::wstring m_expected;
};

} // namespace mxovshare
