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

// What unpacking has created; removes it, newest first, unless it is kept. Entries are added before they are
// created, so that nothing can fail in between.
class CreatedFiles {
public:
    CreatedFiles() = default;
    ~CreatedFiles() {
        for (auto created = m_created.rbegin(); created != m_created.rend(); ++created) {
            if (created->folders == 0) {
                RemoveFile(created->path);
            }
            for (std::size_t i = 0; i < created->folders; ++i) {
                RemoveFolder(created->path);
                created->path.resize(created->path.find_last_of(kSeparators));
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
                MakeFolders(path.substr(0, path.find_last_of(kSeparators)));
                UnpackFile(entry, path, meter);
            }
        }
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

    void UnpackFile(const ZipEntry& entry, const std::wstring& path, ProgressMeter& meter) {
        const std::wstring full = common::LongPath(path);
        m_created.AddFile(full);
        const bool isHidden = (entry.attributes & kAttributeHidden) != 0;
        DWORD error = ERROR_SUCCESS;
        const common::UniqueHandle handle = CreateNewFile(full, isHidden, error);
        if (!handle) {
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
