// What hosts ask about folders that packages were unpacked into.
#include "mxovpackage.h"

#include "common/Paths.h"
#include "files/DiskFile.h"
#include "files/FolderPath.h"
#include "files/FolderSearch.h"
#include "files/WebMark.h"
#include "package/PackageErrors.h"
#include "package/PackageStamp.h"
#include "zip/Checksum.h"

namespace mxovshare {

namespace {

constexpr std::wstring_view kOwnerLock = L"~$";
constexpr std::wstring_view kOpenLock = L".~lock.";

// `below` is empty or ends with a separator. Links count as files and are not followed.
void ListBelow(const std::wstring& folder, const std::wstring& below, std::vector<PackageEntry>& files) {
    for (FolderSearch search(JoinPath(folder, below)); search; search.Next()) {
        const std::wstring name = below + search->name;
        if (search->isFolder && !search->isRedirected) {
            ListBelow(folder, name + L"\\", files);
            continue;
        }
        if (IsWebMark(name)) {
            continue;
        }
        PackageEntry& file = files.emplace_back();
        file.name = name;
        file.size = search->size;
        file.modified = search->written;
    }
}

std::uint32_t ChecksumOfContent(const std::wstring& file) {
    const DiskSource source(file);
    std::uint32_t checksum = 0;
    ReadPieces(source, 0, source.Size(), [&checksum](Bytes piece) { checksum = Checksum(checksum, piece); });
    return checksum;
}

} // namespace

PackageResult ListFolder(const std::wstring& folder, std::vector<PackageEntry>& files) noexcept {
    return RunForResult(folder, [&] {
        files.clear();
        ListBelow(folder, {}, files);
    });
}

PackageResult ReadChecksum(const std::wstring& file, std::uint32_t& crc32) noexcept {
    return RunForResult(file, [&] { crc32 = ChecksumOfContent(file); });
}

std::wstring StampOfPackageFile(const std::wstring& file) noexcept {
    std::wstring stamp;
    RunForResult(file, [&] { stamp = StampOfPackage(file); });
    return stamp;
}

bool IsOfficeLockOf(std::wstring_view lock, std::wstring_view document) noexcept {
    if (lock.starts_with(kOpenLock)) {
        lock.remove_prefix(kOpenLock.size());
        return lock.ends_with(L'#') && common::IsSamePath(lock.substr(0, lock.size() - 1), document);
    }
    if (!lock.starts_with(kOwnerLock)) {
        return false;
    }
    lock.remove_prefix(kOwnerLock.size());
    return common::IsSamePath(lock, document) ||
           (document.size() > kOwnerLock.size() &&
            common::IsSamePath(lock, document.substr(kOwnerLock.size())));
}

} // namespace mxovshare
