// The folder of its own into which one opened package is unpacked.
#pragma once

#include "package/FolderComparison.h"
#include "package/Handles.h"

#include <memory>
#include <string>
#include <vector>

namespace viewer {

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

    /// Takes over the sessions that a crash left with a completely unpacked package, and those that were
    /// kept. What was left half unpacked is removed.
    [[nodiscard]] static std::vector<std::unique_ptr<PackageSession>> TakeOver() noexcept;

    ~PackageSession();
    PackageSession(const PackageSession&) = delete;
    PackageSession& operator=(const PackageSession&) = delete;

    /// Where the package is unpacked, without a separator at the end.
    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }

    /// The same, ending with a separator.
    [[nodiscard]] std::wstring FolderWithSeparator() const { return m_folder + L"\\"; }

    /// Full path of the package file.
    [[nodiscard]] const std::wstring& PackageFile() const { return m_packageFile; }

    /// The package file's stamp when the folder last agreed with it, as `Record` was told; empty before.
    [[nodiscard]] const std::wstring& Stamp() const { return m_stamp; }

    /// Records that the package is unpacked completely and which state of the package file the folder agrees
    /// with. To be told after each unpacking and each save.
    void Record(const std::wstring& stamp);

    /// Goes on with a session that was taken over: saving asks before it replaces a package file of another
    /// stamp.
    void Resume();

    /// The package's entries when the folder last agreed with it; empty before, and for a package file that
    /// cannot be read.
    [[nodiscard]] const std::vector<mxovshare::PackageEntry>& Entries() const { return m_entries; }

    /// How the files of the folder differ from those entries.
    [[nodiscard]] std::vector<FileChange> Changes() const { return FindChanges(m_folder, m_entries); }

    /// Leaves folder and session file to a later start of the viewer.
    void Keep() { m_keep = true; }

private:
    PackageSession(std::wstring packageFile, std::wstring folder, UniqueHandle sessionFile);

    std::wstring m_packageFile;
    std::wstring m_folder;
    UniqueHandle m_sessionFile;
    std::wstring m_stamp;
    std::vector<mxovshare::PackageEntry> m_entries; // of the package file with that stamp
    bool m_keep = false;
};

} // namespace viewer
