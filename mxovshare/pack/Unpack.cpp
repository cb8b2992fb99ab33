#include "pack/Unpack.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FolderPath.h"
#include "pack/FileTimes.h"
#include "pack/PackageContent.h"
#include "pack/ProgressMeter.h"
#include "zip/EntryReader.h"

#include <vector>

namespace mxovshare {

namespace {

// What unpacking has created; removes it, newest first, unless it is kept. Entries are added before they are
// created, so that nothing can fail in between.
class CreatedFiles {
public:
    CreatedFiles() = default;
    ~CreatedFiles() {
        for (auto created = m_created.rbegin(); created != m_created.rend(); ++created) {
            if (created->folders == 0) {
                DeleteFileW(created->path.c_str());
            }
            for (std::size_t i = 0; i < created->folders; ++i) {
                RemoveDirectoryW(created->path.c_str());
                created->path.resize(created->path.find_last_of(L'\\'));
            }
        }
    }
    CreatedFiles(const CreatedFiles&) = delete;
    CreatedFiles& operator=(const CreatedFiles&) = delete;

    void AddFile(std::wstring path) { m_created.push_back({std::move(path)}); }
    void BeginFolders() { m_created.push_back({}); }
    // Adds a folder that was created inside the one before it.
    void AddFolder(std::wstring&& path) noexcept {
        m_created.back().path = std::move(path);
        ++m_created.back().folders;
    }
    // Removes the last entry, which was not created.
    void Drop() { m_created.pop_back(); }
    void Keep() { m_created.clear(); }

private:
    // A file, or the innermost of nested folders: storing each one's path would take the square of their
    // depth.
    struct Created {
        std::wstring path;
        std::size_t folders = 0;
    };
    std::vector<Created> m_created;
};

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsEmptyFolder(const std::wstring& path) {
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW(common::LongPath(JoinPath(path, L"*")).c_str(), &data);
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
    Unpacker(const std::wstring& file, const std::wstring& folder, WebMark::StreamProbe hasStreams)
        : m_source(file), m_entries(ReadZipDirectory(m_source)), m_mark(file, hasStreams),
          m_folder(FolderPath(folder)) {}

    void Run(PackageProgress* progress, const std::function<void()>& onUnpacked) {
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
        onUnpacked();
        m_created.Keep();
    }

private:
    void PrepareFolder() {
        if (GetFileAttributesW(m_folder.c_str()) != INVALID_FILE_ATTRIBUTES) {
            if (!IsFolder(m_folder)) {
                throw FileFailure(L"cannot unpack into \"" + m_folder + L"\": it is a file");
            }
            if (!IsEmptyFolder(m_folder)) {
                throw FileFailure(L"cannot unpack into \"" + m_folder + L"\": it is not empty");
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

    // Creates the folder and those above it that are missing.
    void MakeFolders(const std::wstring& path) {
        if (path == m_lastFolder) {
            return;
        }
        const std::vector<std::size_t> missing = MissingFolders(path);
        if (!missing.empty()) {
            m_created.BeginFolders();
        }
        for (auto end = missing.rbegin(); end != missing.rend(); ++end) {
            std::wstring folder = common::LongPath(path.substr(0, *end));
            if (!CreateDirectoryW(folder.c_str(), nullptr)) {
                ThrowFileFailure(L"cannot create folder", path.substr(0, *end), GetLastError());
            }
            m_created.AddFolder(std::move(folder));
        }
        m_lastFolder = path;
    }

    // Lengths of the paths of those folders that do not exist, innermost first.
    static std::vector<std::size_t> MissingFolders(const std::wstring& path) {
        std::vector<std::size_t> missing;
        std::size_t end = path.size();
        while (end != 0 && end != std::wstring::npos && !IsFolder(common::LongPath(path.substr(0, end)))) {
            missing.push_back(end);
            end = path.find_last_of(L"\\/", end - 1);
        }
        return missing;
    }

    void UnpackFile(const ZipEntry& entry, const std::wstring& path, ProgressMeter& meter) {
        const std::wstring full = common::LongPath(path);
        m_created.AddFile(full);
        // Unpacked files are meant to be edited, so none is read-only.
        const DWORD attributes = FILE_ATTRIBUTE_ARCHIVE | (entry.attributes & kAttributeHidden);
        const common::UniqueHandle handle = common::OwnFile(CreateFileW(
            full.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, attributes, nullptr));
        if (!handle) {
            const DWORD error = GetLastError();
            m_created.Drop();
            ThrowFileFailure(L"cannot create", path, error);
        }
        OpenFile target(handle.get(), path);
        const std::uint32_t packed = ReadEntry(m_source, entry, [&](Bytes piece) {
            target.Write(target.Size(), piece);
            meter.Advance(piece.size());
        });
        VerifiedEntryCache::Instance().Add(entry, packed);
        m_mark.CopyTo(path);
        const FILETIME modified = ToFileTime(entry.modified);
        // With the attributes, since Wine 10 takes "hidden" from a file whose time alone is set.
        FILE_BASIC_INFO information = {};
        information.LastWriteTime = {{modified.dwLowDateTime, static_cast<LONG>(modified.dwHighDateTime)}};
        information.FileAttributes = attributes;
        SetFileInformationByHandle(handle.get(), FileBasicInfo, &information, sizeof information);
    }

    DiskSource m_source;
    std::vector<ZipEntry> m_entries;
    WebMark m_mark; // of the package
    std::wstring m_folder;
    std::wstring m_lastFolder;
    CreatedFiles m_created;
};

} // namespace

void UnpackInto(const std::wstring& file, const std::wstring& folder, PackageProgress* progress,
                const std::function<void()>& onUnpacked, WebMark::StreamProbe hasStreams) {
    Unpacker(file, folder, hasStreams).Run(progress, onUnpacked);
}

} // namespace mxovshare
