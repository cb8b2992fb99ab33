// What an earlier version of a package holds, and the file that lists it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

namespace viewer {

/// A file of a version.
struct KeptFile {
    std::wstring name; ///< relative to the package folder, separated by "\"
    std::uint64_t size = 0;
    std::uint32_t crc32 = 0;
    std::wstring contents; ///< identifier of the version with whose new files it is stored
};

/// A package as it was saved once.
struct Version {
    std::wstring id;      ///< when it was kept, as `VersionId` has it
    std::wstring package; ///< full path of the package file
    FILETIME saved = {};  ///< last write of the package file, UTC
    std::wstring by;      ///< of the last entry of its history, like the next two
    std::wstring operation;
    std::wstring remarks;
    std::vector<KeptFile> files; ///< in the order of the package
};

inline constexpr wchar_t kListExtension[] = L".ini"; ///< of the list of a version's files
inline constexpr wchar_t kContentsExtension[] =
    L".files"; ///< of the package of the files that were new in it

/// A time as a name: later times sort behind earlier ones.
[[nodiscard]] std::wstring VersionId(const FILETIME& time);

/// The time of an identifier.
[[nodiscard]] FILETIME TimeOfId(const std::wstring& id);

/// Whether a text is an identifier.
[[nodiscard]] bool IsVersionId(const std::wstring& text);

/// Writes the list of a version into `folder`: complete, or not at all. Returns the system's code;
/// ERROR_SUCCESS on success.
[[nodiscard]] DWORD WriteVersion(const std::wstring& folder, const Version& version);

/// Reads a list back; false when it is not there or damaged.
[[nodiscard]] bool ReadVersion(const std::wstring& folder, const std::wstring& id, Version& version);

} // namespace viewer
