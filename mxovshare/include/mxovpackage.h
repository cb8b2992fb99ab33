// Package files for hosts and tools: create, list, unpack, verify. Nothing here throws; no handle is left
// open.
#pragma once

#include "mxovinformation.h"

#include <cstdint>
#include <string_view>

namespace mxovshare {

/// One file or folder inside a package.
struct PackageEntry {
    std::wstring name;            ///< relative, separated by "\", as it would be unpacked
    std::uint64_t size = 0;       ///< bytes, unpacked
    std::uint64_t packedSize = 0; ///< bytes inside the package
    std::uint32_t crc32 = 0;      ///< of the unpacked bytes
    FILETIME modified = {};       ///< last write, UTC
    bool isFolder = false;
};

/// How an operation ended. `message` is one line that names the file or entry and the reason; empty on
/// success and after a cancel.
struct PackageResult {
    bool ok = false;
    bool cancelled = false;
    std::wstring message;
};

/// Told about the progress of long work, on the calling thread.
class PackageProgress {
public:
    virtual ~PackageProgress() = default;
    /// `done` of `total` bytes are finished and `name` is in work. Returning false cancels.
    virtual bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) = 0;
    /// The new package is complete, and replacing the old one would lose something of that file, in words
    /// such as "its owner, its other hard links". Returning false cancels.
    virtual bool OnLoss(const std::wstring& /*lost*/) { return true; }
};

/// Whether a file of this name is a lock that an office program keeps beside a document while it is open
/// there:
/// "~$..." or ".~lock....#".
inline bool IsOfficeLock(std::wstring_view name) noexcept {
    return name.starts_with(L"~$") || (name.starts_with(L".~lock.") && name.ends_with(L'#'));
}

/// Whether a lock belongs to a document in the same folder. Some programs put the mark of a lock in place of
/// the first two characters of a long name.
[[nodiscard]] MXOVSHARE_API bool IsOfficeLockOf(std::wstring_view lock, std::wstring_view document) noexcept;

/// Packs every file below `folder` into a new package `file`, replacing an old one in one step when complete.
/// The locks that office programs leave beside open documents are left out; marks of the web are not packed.
MXOVSHARE_API PackageResult CreatePackage(const std::wstring& folder, const std::wstring& file,
                                          PackageProgress* progress = nullptr) noexcept;

/// Lists a package's entries in their order. Refuses what cannot be unpacked safely.
MXOVSHARE_API PackageResult ListPackage(const std::wstring& file,
                                        std::vector<PackageEntry>& entries) noexcept;

/// Unpacks a package into `folder`, which must not exist or be empty. Every file gets the mark of the web
/// that the package has. On failure or cancel nothing is left behind.
MXOVSHARE_API PackageResult UnpackPackage(const std::wstring& file, const std::wstring& folder,
                                          PackageProgress* progress = nullptr) noexcept;

/// Marks an existing file as coming from the web in the way in which `from` is marked, where the file system
/// has such marks. A file without a mark changes nothing.
MXOVSHARE_API PackageResult CopyWebMark(const std::wstring& from, const std::wstring& to) noexcept;

/// Reads and checks every entry without writing anything.
MXOVSHARE_API PackageResult VerifyPackage(const std::wstring& file,
                                          PackageProgress* progress = nullptr) noexcept;

/// Reads the package's information file ("mxinfo.ini", else "Private\mxinfo.ini") without unpacking anything.
/// `path` is a package file, or the folder of an unpacked one. A package without an information file has no
/// sections; the call succeeds.
MXOVSHARE_API PackageResult ReadInformation(const std::wstring& path, Information& information) noexcept;

/// Lists the files below a folder with their sizes and last writes. Links are not followed; checksums are not
/// read.
MXOVSHARE_API PackageResult ListFolder(const std::wstring& folder, std::vector<PackageEntry>& files) noexcept;

/// Reads the checksum of a file's content, which packages hold for each entry. The file may be written or
/// replaced by other programs meanwhile.
MXOVSHARE_API PackageResult ReadChecksum(const std::wstring& file, std::uint32_t& crc32) noexcept;

/// What a package file is now, as one word to compare with `StampOfFolder`; empty when it cannot be found.
MXOVSHARE_API std::wstring StampOfPackageFile(const std::wstring& file) noexcept;

/// What the package file was when `folder` was last unpacked from it or saved to it, as one word to keep with
/// the folder; empty for a folder that this process knows nothing of.
MXOVSHARE_API std::wstring StampOfFolder(const std::wstring& folder) noexcept;

/// Continues with a folder that another process unpacked from `file`, with the stamp kept then. Saving asks
/// before it replaces a file of another stamp.
MXOVSHARE_API void ResumeFolder(const std::wstring& folder, const std::wstring& file,
                                const std::wstring& stamp) noexcept;

/// The remarks of the history entry that the next successful save of `folder` adds; empty for none.
MXOVSHARE_API void SetSaveRemarks(const std::wstring& folder, const std::wstring& remarks) noexcept;

/// Whether a save of `folder` failed or was cancelled since this was last asked or the folder was last saved.
[[nodiscard]] MXOVSHARE_API bool TakeSaveFailure(const std::wstring& folder) noexcept;

} // namespace mxovshare
