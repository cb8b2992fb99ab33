#include "files/FolderSearch.h"

#include "common/Clock.h"
#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/SystemError.h"
#include "common/Utf8.h"
#include "files/FileFailure.h"

#include <cerrno>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>

namespace mxovshare {

struct FolderSearch::Search {
    explicit Search(const std::wstring& folder) : handle(opendir(common::FilePath(folder).c_str())) {}

    bool IsAtDots() const {
        const std::string_view name = entry->d_name;
        return name == "." || name == "..";
    }
    bool Next() {
        errno = 0;
        entry = readdir(handle.get());
        return entry != nullptr;
    }

    common::UniqueFolder handle;
    const dirent* entry = nullptr;
};

namespace {

// As Wine shows files of this system: hidden when their names begin with a dot, read-only when nobody may
// write them.
std::uint8_t AttributesOf(const std::wstring& name, mode_t mode) {
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    constexpr unsigned kReadOnly = 0x01;
    constexpr unsigned kHidden = 0x02;
    constexpr unsigned kFolder = 0x10;
    constexpr unsigned kArchive = 0x20;
    return static_cast<std::uint8_t>((S_ISDIR(mode) ? kFolder : kArchive) |
                                     ((mode & kAnyWrite) == 0 ? kReadOnly : 0) |
                                     (name.starts_with(L'.') ? kHidden : 0));
}

void Describe(const struct stat& about, FolderEntry& entry) {
    entry.isFolder = S_ISDIR(about.st_mode);
    entry.isLink = S_ISLNK(about.st_mode);
    entry.isRedirected = entry.isLink;
    entry.attributes = AttributesOf(entry.name, about.st_mode);
    entry.size = static_cast<std::uint64_t>(about.st_size);
    entry.written = common::ToFileTime(about.st_mtim.tv_sec, about.st_mtim.tv_nsec);
}

} // namespace

FolderSearch::FolderSearch(const std::wstring& folder)
    : m_folder(folder), m_search(std::make_unique<Search>(folder)) {
    if (!m_search->handle) {
        ThrowFileFailure(L"cannot list", m_folder, common::LastError());
    }
    Take(m_search->Next());
}

FolderSearch::~FolderSearch() = default;

void FolderSearch::Next() {
    Take(m_search->Next());
}

void FolderSearch::Take(bool found) {
    while (found && m_search->IsAtDots()) {
        found = m_search->Next();
    }
    m_found = found;
    if (!found && errno != 0) {
        ThrowFileFailure(L"cannot list", m_folder, common::LastError());
    }
    if (!found) {
        return;
    }
    m_entry.name = common::FromNameBytes(m_search->entry->d_name);
    struct stat about = {};
    if (fstatat(dirfd(m_search->handle.get()), m_search->entry->d_name, &about, AT_SYMLINK_NOFOLLOW) == 0) {
        Describe(about, m_entry);
    } else if (errno == ENOENT) { // removed meanwhile
        Next();
    } else {
        ThrowFileFailure(L"cannot list", m_folder, common::LastError());
    }
}

} // namespace mxovshare
