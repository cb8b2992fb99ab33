#include "pack/Unpack.h"

#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"
#include "files/LongPath.h"
#include "pack/FileTimes.h"
#include "pack/PackageContent.h"
#include "pack/ProgressMeter.h"
#include "zip/EntryReader.h"

#include <vector>

namespace mxovshare {

namespace {

// Removes what was made, newest first, unless it is kept.
class CreatedFiles {
public:
    CreatedFiles() = default;
    ~CreatedFiles() {
        for (auto made = m_made.rbegin(); made != m_made.rend(); ++made) {
            if (made->isFolder) {
                RemoveDirectoryW(made->path.c_str());
            } else {
                DeleteFileW(made->path.c_str());
            }
        }
    }
    CreatedFiles(const CreatedFiles&) = delete;
    CreatedFiles& operator=(const CreatedFiles&) = delete;

    void Add(const std::wstring& path, bool isFolder) { m_made.push_back({path, isFolder}); }
    void Keep() { m_made.clear(); }

private:
    struct Made {
        std::wstring path;
        bool isFolder;
    };
    std::vector<Made> m_made;
};

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsEmptyFolder(const std::wstring& path) {
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW(LongPath(JoinPath(path, L"*")).c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return true;
    }
    bool isEmpty = true;
    do {
        const std::wstring_view name = data.cFileName;
        isEmpty = name == L"." || name == L"..";
    } while (isEmpty && FindNextFileW(search, &data));
    FindClose(search);
    return isEmpty;
}

class Unpacker {
public:
    Unpacker(const std::wstring& file, const std::wstring& folder)
        : m_source(file), m_entries(ReadZipDirectory(m_source)), m_folder(FolderPath(folder)) {}

    void Run(PackageProgress* progress) {
        PrepareFolder();
        CheckRoom();
        ProgressMeter meter(progress, TotalSize(m_entries));
        for (const ZipEntry& entry : m_entries) {
            const std::wstring name = RelativePath(entry);
            meter.Begin(name);
            const std::wstring path = JoinPath(m_folder, name);
            if (entry.isFolder) {
                MakeFolders(path);
            } else {
                MakeFolders(path.substr(0, path.find_last_of(L'\\')));
                UnpackFile(entry, path, meter);
            }
        }
        m_created.Keep();
    }

private:
    void PrepareFolder() {
        if (GetFileAttributesW(m_folder.c_str()) != INVALID_FILE_ATTRIBUTES) {
            if (!IsFolder(m_folder)) {
                throw FileFailure{L"cannot unpack into \"" + m_folder + L"\": it is a file"};
            }
            if (!IsEmptyFolder(m_folder)) {
                throw FileFailure{L"cannot unpack into \"" + m_folder + L"\": it is not empty"};
            }
        }
        MakeFolders(m_folder);
    }

    void CheckRoom() const {
        ULARGE_INTEGER room = {};
        if (GetDiskFreeSpaceExW(m_folder.c_str(), &room, nullptr, nullptr) &&
            room.QuadPart < TotalSize(m_entries)) {
            ThrowFileFailure(L"cannot unpack into", m_folder, ERROR_DISK_FULL);
        }
    }

    // Makes the folder and those above it that are missing.
    void MakeFolders(const std::wstring& path) {
        if (path == m_lastFolder) {
            return;
        }
        std::vector<std::wstring> missing;
        std::wstring next = path;
        while (!IsFolder(LongPath(next))) {
            missing.push_back(next);
            const std::size_t cut = next.find_last_of(L"\\/");
            if (cut == std::wstring::npos || cut == 0) {
                break;
            }
            next.resize(cut);
        }
        while (!missing.empty()) {
            const std::wstring full = LongPath(missing.back());
            if (!CreateDirectoryW(full.c_str(), nullptr)) {
                ThrowFileFailure(L"cannot create folder", missing.back(), GetLastError());
            }
            m_created.Add(full, true);
            missing.pop_back();
        }
        m_lastFolder = path;
    }

    void UnpackFile(const ZipEntry& entry, const std::wstring& path, ProgressMeter& meter) {
        const std::wstring full = LongPath(path);
        // An unpacked package is there to be edited, so nothing of it is read-only.
        const DWORD attributes = FILE_ATTRIBUTE_ARCHIVE | (entry.attributes & kAttributeHidden);
        const FileHandle handle(CreateFileW(full.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                            attributes, nullptr));
        if (!handle) {
            ThrowFileFailure(L"cannot create", path, GetLastError());
        }
        m_created.Add(full, false);
        OpenFile target(handle.Get(), path);
        const std::uint32_t packed = ReadEntry(m_source, entry, [&](Bytes piece) {
            target.Write(target.Size(), piece);
            meter.Advance(piece.size());
        });
        VerifiedEntryCache::Instance().Add(entry, packed);
        const FILETIME modified = ToFileTime(entry.modified);
        // With the attributes, since Wine 10 takes "hidden" from a file whose time alone is set.
        FILE_BASIC_INFO information = {};
        information.LastWriteTime = {{modified.dwLowDateTime, static_cast<LONG>(modified.dwHighDateTime)}};
        information.FileAttributes = attributes;
        SetFileInformationByHandle(handle.Get(), FileBasicInfo, &information, sizeof information);
    }

    DiskSource m_source;
    std::vector<ZipEntry> m_entries;
    std::wstring m_folder;
    std::wstring m_lastFolder;
    CreatedFiles m_created;
};

} // namespace

void UnpackInto(const std::wstring& file, const std::wstring& folder, PackageProgress* progress) {
    Unpacker(file, folder).Run(progress);
}

} // namespace mxovshare
