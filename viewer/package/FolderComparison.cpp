#include "package/FolderComparison.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/Paths.h"
#include "package/Paths.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string_view>

namespace viewer {

namespace {

using mxovshare::PackageEntry;

struct FolderFile {
    std::wstring name; // relative to the folder
    std::uint64_t size = 0;
    FILETIME modified = {};
};

bool IsDots(std::wstring_view name) {
    return name == L"." || name == L"..";
}

// `below` is empty or ends with a separator. What is found of each file comes with the listing: no file is
// asked on its own. Links are not followed.
void AddFiles(const std::wstring& folder, const std::wstring& below, std::vector<FolderFile>& files) {
    WIN32_FIND_DATAW found = {};
    const common::UniqueSearch search = common::OwnSearch(
        FindFirstFileExW(common::ExtendedPath(folder + L"\\" + below + L"*").c_str(), FindExInfoBasic, &found,
                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
    if (!search) {
        return;
    }
    constexpr DWORD kFolderOrLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    do {
        const std::wstring name = below + found.cFileName;
        if ((found.dwFileAttributes & kFolderOrLink) != FILE_ATTRIBUTE_DIRECTORY) {
            files.push_back(
                {name, std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow, found.ftLastWriteTime});
        } else if (!IsDots(found.cFileName)) {
            AddFiles(folder, name + L"\\", files);
        }
    } while (FindNextFileW(search.get(), &found));
}

std::vector<FolderFile> FilesBelow(const std::wstring& folder) {
    std::vector<FolderFile> files;
    AddFiles(folder, {}, files);
    return files;
}

// The lock of a document: "~$" before its name or in place of the first two characters, or ".~lock." before
// and
// "#" behind its name.
constexpr std::wstring_view kOwner = L"~$";
constexpr std::wstring_view kLock = L".~lock.";

bool IsLockOf(const std::wstring& lock, std::wstring name) {
    if (lock.starts_with(kLock)) {
        return common::IsSamePath(lock, std::wstring(kLock) + name + L"#");
    }
    return common::IsSamePath(lock, std::wstring(kOwner) + name) ||
           (name.size() > kOwner.size() && common::IsSamePath(lock, name.replace(0, kOwner.size(), kOwner)));
}

std::wstring NameOf(const FolderFile& file) {
    return FileName(file.name);
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.size() - FileName(path).size());
}

// As the file system compares names.
struct NameLess {
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

constexpr std::array<std::uint32_t, 256> MakeTable() {
    std::array<std::uint32_t, 256> table = {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320U : 0);
        }
        table[byte] = value;
    }
    return table;
}

// The checksum that packages keep of every file; nothing when the file cannot be read.
std::optional<std::uint32_t> Checksum(const std::filesystem::path& path) {
    static constexpr std::array<std::uint32_t, 256> kTable = MakeTable();
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::vector<char> block(1 << 16);
    std::uint32_t checksum = 0xFFFFFFFF;
    do {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        for (std::streamsize i = 0; i < file.gcount(); ++i) {
            checksum =
                (checksum >> 8) ^
                kTable[(checksum ^ static_cast<unsigned char>(block[static_cast<std::size_t>(i)])) & 0xFF];
        }
    } while (file);
    return ~checksum;
}

bool HasContent(const std::wstring& folder, const FolderFile& file, const PackageEntry& entry) {
    return file.size == entry.size &&
           Checksum(common::ExtendedPath(folder + L"\\" + file.name)) == entry.crc32;
}

bool HasContentOrTime(const std::wstring& folder, const FolderFile& file, const PackageEntry& entry) {
    return (file.size == entry.size && CompareFileTime(&file.modified, &entry.modified) == 0) ||
           HasContent(folder, file, entry);
}

using Sameness = bool (*)(const std::wstring&, const FolderFile&, const PackageEntry&);

std::vector<FileChange> Compare(const std::wstring& folder, const std::vector<PackageEntry>& entries,
                                Sameness isSame) {
    std::map<std::wstring, const PackageEntry*, NameLess> missing;
    for (const PackageEntry& entry : entries) {
        if (!entry.isFolder && !mxovshare::IsOfficeLock(FileName(entry.name))) {
            missing.emplace(entry.name, &entry);
        }
    }
    std::vector<FileChange> changes;
    for (const FolderFile& file : FilesBelow(folder)) {
        if (mxovshare::IsOfficeLock(NameOf(file))) {
            continue;
        }
        const auto found = missing.find(file.name);
        if (found == missing.end()) {
            changes.push_back({file.name, FileChangeKind::Added});
            continue;
        }
        if (!isSame(folder, file, *found->second)) {
            changes.push_back({file.name, FileChangeKind::Changed});
        }
        missing.erase(found);
    }
    for (const auto& [name, entry] : missing) {
        changes.push_back({name, FileChangeKind::Removed});
    }
    std::ranges::sort(changes, NameLess(), &FileChange::name);
    return changes;
}

} // namespace

std::vector<FileChange> FindChanges(const std::wstring& folder, const std::vector<PackageEntry>& entries) {
    return Compare(folder, entries, HasContentOrTime);
}

bool DiffersFromPackage(const std::wstring& folder, const std::wstring& packageFile) {
    std::vector<PackageEntry> entries;
    return !mxovshare::ListPackage(packageFile, entries).ok || !Compare(folder, entries, HasContent).empty();
}

std::vector<std::wstring> FindOpenDocuments(const std::wstring& folder) {
    std::vector<FolderFile> files = FilesBelow(folder);
    const auto firstLock = std::partition(files.begin(), files.end(), [](const FolderFile& file) {
        return !mxovshare::IsOfficeLock(NameOf(file));
    });
    std::vector<std::wstring> open;
    for (auto lock = firstLock; lock != files.end(); ++lock) {
        for (auto file = files.begin(); file != firstLock; ++file) {
            if (FolderOf(file->name) == FolderOf(lock->name) && IsLockOf(NameOf(*lock), NameOf(*file))) {
                open.push_back(file->name);
            }
        }
    }
    return open;
}

FILETIME LastWriteBelow(const std::wstring& folder) {
    FILETIME last = {};
    for (const FolderFile& file : FilesBelow(folder)) {
        if (CompareFileTime(&file.modified, &last) > 0) {
            last = file.modified;
        }
    }
    return last;
}

} // namespace viewer
