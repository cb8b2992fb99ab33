// The folder of its own into which one opened package is unpacked.
#pragma once

#include "Handles.h"

#include <memory>
#include <string>

/// Owns one folder below the user's temporary folder, removed with the object. A session file beside the
/// folder, held open while the session lives, names the package: a folder whose session file exists but is
/// held by nobody was left by a crash and may hold unsaved work; a folder without a session file is finished
/// with.
class PackageSession {
public:
    /// Prepares a session for a package; the folder itself is made by the unpacking. Empty on failure, and
    /// `error` says why.
    [[nodiscard]] static std::unique_ptr<PackageSession> Create(const std::wstring& packageFile,
                                                                std::wstring& error);

    /// Removes the folders of finished sessions that could not be removed in their time. Leaves what a crash
    /// left.
    static void RemoveLeftovers() noexcept;

    ~PackageSession();
    PackageSession(const PackageSession&) = delete;
    PackageSession& operator=(const PackageSession&) = delete;

    /// Where the package is unpacked, without a separator at the end.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }

    /// The same, ending with a separator.
    [[nodiscard]] std::wstring FolderWithSeparator() const { return m_folder + L"\\"; }

    /// Full path of the package file.
    [[nodiscard]] const std::wstring& PackageFile() const { return m_packageFile; }

private:
    PackageSession(std::wstring packageFile, std::wstring folder, UniqueHandle sessionFile);

    std::wstring m_packageFile;
    std::wstring m_folder;
    UniqueHandle m_sessionFile;
};
