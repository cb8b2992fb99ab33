// The earlier versions of all packages that this user saved here.
#pragma once

#include "mxovpackage.h"
#include "versions/VersionFolder.h"
#include "versions/VersionLimits.h"

namespace viewer {

/// Members may be called on any thread and by several viewers at the same time; they wait for each other.
class VersionStore {
public:
    /// The folder among the user's local application data, or beside the one where an administrator has
    /// packages unpacked.
    [[nodiscard]] static std::wstring UserFolder();

    /// `folder` is created when it is needed.
    explicit VersionStore(std::wstring folder) : m_folder(std::move(folder)) {}

    [[nodiscard]] const std::wstring& Folder() const { return m_folder; }

    /// Keeps what a package file holds now as its latest version, unless that holds the same, and drops what
    /// is beyond the limits.
    [[nodiscard]] mxovshare::PackageResult Keep(const std::wstring& packageFile, const VersionLimits& limits,
                                                mxovshare::PackageProgress* progress = nullptr) const;

    /// The versions of a package file.
    [[nodiscard]] VersionList Read(const std::wstring& packageFile) const;

    /// Unpacks files of a version of a package; see `RestoreFiles`.
    [[nodiscard]] mxovshare::PackageResult Restore(const std::wstring& packageFile,
                                                   const std::vector<KeptFile>& files,
                                                   const std::wstring& target,
                                                   mxovshare::PackageProgress* progress = nullptr) const;

    /// Where the versions of a package file lie.
    [[nodiscard]] std::wstring FolderOf(const std::wstring& packageFile) const;

private:
    void KeepWithin(std::uint64_t bytes) const;
    [[nodiscard]] std::vector<std::wstring> Folders() const;

    std::wstring m_folder;
};

} // namespace viewer
