#include "pack/Unpack.h"

#include "common/LongPath.h"
#include "files/DiskFile.h"
#include "files/FileFailure.h"
#include "files/FileSystem.h"
#include "files/FolderPath.h"
#include "files/FolderSearch.h"
#include "pack/FileTimes.h"
#include "pack/PackageContent.h"
#include "pack/ProgressMeter.h"
#include "zip/EntryReader.h"

#include <vector>

namespace mxovshare {

namespace {

constexpr wchar_t kSeparators[] = L"\\/";

// What unpacking has created; removes it, newest first, unless it is kept.
class CreatedFiles {
public:
    explicit CreatedFiles(std::size_t files) : m_files(files) {}
    ~CreatedFiles() {
        for (const std::wstring& file : m_files) {
            if (!file.empty()) {
                RemoveFile(file);
            }
        }
        for (auto created = m_folders.rbegin(); created != m_folders.rend(); ++created) {
            for (std::size_t i = 0; i < created->count; ++i) {
                RemoveFolder(created->path);
                created->path.resize(created->path.find_last_of(kSeparators));
            }
        }
    }
    CreatedFiles(const CreatedFiles&) = delete;
    CreatedFiles& operator=(const CreatedFiles&) = delete;

    // Adds a file that was created, on any thread, each index once.
    void AddFile(std::size_t index, std::wstring&& path) noexcept { m_files[index] = std::move(path); }
    // Called before the first of nested folders is created, so that nothing can fail in between.
    void BeginFolders() { m_folders.push_back({}); }
    // Adds a folder that was created inside the one before it.
    void AddFolder(std::wstring&& path) noexcept {
        m_folders.back().path = std::move(path);
        ++m_folders.back().count;
    }
    void Keep() {
        m_files.clear();
        m_folders.clear();
    }

private:
    // The innermost of nested folders: storing each one's path would take the square of their depth.
    struct Folders {
        std::wstring path;
        std::size_t count = 0;
    };
    std::vector<std::wstring> m_files;
    std::vector<Folders> m_folders;
};

class Unpacker {
public:
    Unpacker(const std::wstring& file, const std::wstring& folder, WebMark::StreamProbe hasStreams)
        : m_source(file), m_entries(ReadZipDirectory(m_source)), m_mark(file, hasStreams),
          m_folder(FolderPath(folder)), m_created(m_entries.size()) {}

    void Run(PackageProgress* progress, const std::function<void()>& onUnpacked) {
        PrepareFolder();
        CheckRoom();
        for (const ZipEntry& entry : m_entries) {
            const std::wstring path = PathOf(entry);
            MakeFolders(entry.isFolder ? path : path.substr(0, path.find_last_of(kSeparators)));
        }
        ProgressMeter meter(progress, TotalSize(m_entries));
        ForEachEntry(m_entries, meter, [this](std::size_t index, const OnPiece& onPiece) {
            if (!m_entries[index].isFolder) {
                UnpackFile(index, onPiece);
            }
        });
        onUnpacked();
        m_created.Keep();
    }

private:
    void PrepareFolder() {
        if (const PathStatus status = StatusOfPath(m_folder); status.exists) {
            if (!status.isFolder) {
                throw FileFailure(L"cannot unpack into \"" + m_folder + L"\": it is a file");
            }
            if (FolderSearch(m_folder)) {
                throw FileFailure(L"cannot unpack into \"" + m_folder + L"\": it is not empty");
            }
        }
        MakeFolders(m_folder);
    }

    void CheckRoom() const {
        const std::optional<std::uint64_t> room = RoomIn(m_folder);
        if (room && *room < TotalSize(m_entries)) {
            ThrowFileFailure(L"cannot unpack into", m_folder, kNoRoom);
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
            if (const DWORD error = MakeFolder(folder); error != ERROR_SUCCESS) {
                ThrowFileFailure(L"cannot create folder", path.substr(0, *end), error);
            }
            m_created.AddFolder(std::move(folder));
        }
        m_lastFolder = path;
    }

    // Lengths of the paths of those folders that do not exist, innermost first.
    static std::vector<std::size_t> MissingFolders(const std::wstring& path) {
        std::vector<std::size_t> missing;
        std::size_t end = path.size();
        while (end != 0 && end != std::wstring::npos && !IsFolder(path.substr(0, end))) {
            missing.push_back(end);
            end = path.find_last_of(kSeparators, end - 1);
        }
        return missing;
    }

    [[nodiscard]] std::wstring PathOf(const ZipEntry& entry) const {
        return JoinPath(m_folder, RelativePath(entry));
    }

    void UnpackFile(std::size_t index, const OnPiece& onPiece) {
        const ZipEntry& entry = m_entries[index];
        const std::wstring path = PathOf(entry);
        std::wstring full = common::LongPath(path);
        const bool isHidden = (entry.attributes & kAttributeHidden) != 0;
        DWORD error = ERROR_SUCCESS;
        const common::UniqueHandle handle = CreateNewFile(full, isHidden, error);
        if (!handle) {
            ThrowFileFailure(L"cannot create", path, error);
        }
        m_created.AddFile(index, std::move(full));
        OpenFile target(handle.get(), path);
        const std::uint32_t packed = ReadEntry(m_source, entry, [&](Bytes piece) {
            target.Write(target.Size(), piece);
            onPiece(piece);
        });
        VerifiedEntryCache::Instance().Add(entry, packed);
        m_mark.CopyTo(path);
        SetWritten(handle.get(), ToFileTime(entry.modified), isHidden);
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
