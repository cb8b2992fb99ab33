// Whether earlier versions are kept, and how many.
#pragma once

#include "versions/VersionLimits.h"

namespace viewer {

class VersionSettings {
public:
    /// Reads and stores them below HKEY_CURRENT_USER in `key`.
    explicit VersionSettings(std::wstring key) : m_key(std::move(key)) {}

    /// Whether versions are kept: as a policy states, else as the user chose, else they are.
    [[nodiscard]] bool AreKept() const;

    /// Whether a policy states it, so that the user has no choice.
    [[nodiscard]] static bool AreDecided();

    /// Stores what the user chose.
    void Keep(bool kept) const;

    /// How many stay: ten of each package, and 2048 MB in all, unless the user's settings state otherwise.
    [[nodiscard]] VersionLimits Limits() const;

private:
    std::wstring m_key;
};

} // namespace viewer
