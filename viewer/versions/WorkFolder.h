// A folder for what is taken out of earlier versions.
#pragma once

#include "common/Handles.h"

#include <string>

namespace viewer {

/// Lies in the store and is removed with everything in it at the end. What a crash left is removed later.
class WorkFolder {
public:
    /// Creates a folder in `store`.
    explicit WorkFolder(const std::wstring& store);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    /// Full path without a separator at the end; empty when it could not be created.
    [[nodiscard]] const std::wstring& Path() const { return m_path; }

    /// Whether a file lies in such a folder of `store`.
    [[nodiscard]] static bool IsIn(const std::wstring& store, const std::wstring& file);

    /// Removes those that no process uses any more, as far as their files are not in use.
    static void RemoveLeftovers(const std::wstring& store);

private:
    std::wstring m_path;
    common::UniqueHandle m_inUse; // a file that cannot be deleted while the object lives
};

} // namespace viewer
