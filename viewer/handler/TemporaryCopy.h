// A copy of a file in a temporary folder of its own.
#pragma once

#include <string>
#include <utility>

namespace viewer {

class TemporaryCopy {
public:
    /// No copy.
    TemporaryCopy() = default;
    TemporaryCopy(TemporaryCopy&& other) noexcept
        : m_folder(std::exchange(other.m_folder, {})), m_path(std::exchange(other.m_path, {})) {}
    TemporaryCopy& operator=(TemporaryCopy&& other) noexcept;
    ~TemporaryCopy() { Remove(); }

    /// Copies a file under its own name, with its mark of the web. False on failure.
    [[nodiscard]] bool Make(const std::wstring& file);

    /// Empty for none.
    [[nodiscard]] const std::wstring& Path() const noexcept { return m_path; }

private:
    void Remove() noexcept;

    std::wstring m_folder;
    std::wstring m_path;
};

} // namespace viewer
