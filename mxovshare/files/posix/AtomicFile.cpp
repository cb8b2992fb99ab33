#include "files/AtomicFile.h"

#include "common/LongPath.h"
#include "common/SystemError.h"
#include "common/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace mxovshare {
namespace {

constexpr char kSuffix[] = ".mxov-new";
constexpr std::size_t kLongestComponent = 255; // bytes, on every file system
constexpr mode_t kPermissions = 07777;

std::string FolderOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

bool IsReplaceable(const std::string& path) {
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat about = {};
    return stat(path.c_str(), &about) != 0 || (!S_ISDIR(about.st_mode) && (about.st_mode & kAnyWrite) != 0);
}

// Whether a path still names the open file: its owner before may have moved it into place.
bool IsNamed(HANDLE file, const std::string& path) {
    struct stat open = {};
    struct stat named = {};
    return fstat(file, &open) == 0 && lstat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

std::uint32_t HashOf(const std::string& text) {
    std::uint32_t hash = 2166136261;
    for (const char unit : text) {
        hash = (hash ^ static_cast<unsigned char>(unit)) * 16777619;
    }
    return hash;
}

// A name that was replaced survives the loss of power only with its folder. Some file systems cannot flush
// one.
void FlushFolder(const std::string& folder) {
    const common::UniqueHandle handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle) {
        fsync(handle.get());
    }
}

} // namespace

const DWORD AtomicFile::kUnknownFailure = EIO;

std::wstring AtomicFile::TemporaryPath(const std::wstring& target) {
    const std::string path = common::FilePath(target);
    const std::size_t folder = path.rfind('/') + 1;
    std::string name = path.substr(folder);
    constexpr std::size_t kRoom = kLongestComponent - std::size(kSuffix);
    if (name.size() > kRoom) {
        std::size_t end = kRoom - 11;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
            --end; // not inside a character
        }
        name = name.substr(0, end) + '~' + std::to_string(HashOf(name));
    }
    return common::FromNameBytes(path.substr(0, folder) + name + kSuffix);
}

AtomicFile::AtomicFile(const std::wstring& target, DWORD patience)
    : m_target(common::FromNameBytes(common::FilePath(target))), m_temporary(TemporaryPath(target)),
      m_patience(patience) {
    if (m_target.empty()) {
        Fail(ENOENT);
    } else if (!IsReplaceable(common::ToNameBytes(m_target))) {
        Fail(EACCES);
    } else if (!Create()) {
        Fail(common::LastError());
    }
}

bool AtomicFile::Write(const void* data, std::size_t size) {
    if (m_error != ERROR_SUCCESS) {
        return false;
    }
    for (const char* place = static_cast<const char*>(data); size > 0;) {
        const ssize_t written = write(m_file.get(), place, size);
        if (written < 0 && errno != EINTR) {
            return Fail(common::LastError());
        }
        const auto done = static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        place += done;
        size -= done;
    }
    return true;
}

// The owner of a temporary file holds a lock on it until it is closed.
bool AtomicFile::Create() {
    using namespace std::chrono;
    const std::string path = common::ToNameBytes(m_temporary);
    const auto end = steady_clock::now() + milliseconds(m_patience);
    for (milliseconds pause(1);; pause = std::min(2 * pause, milliseconds(32))) {
        m_file = common::UniqueHandle(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (!m_file) {
            return false;
        }
        if (flock(m_file.get(), LOCK_EX | LOCK_NB) == 0) {
            if (IsNamed(m_file.get(), path)) {
                m_exists = true;
                return ftruncate(m_file.get(), 0) == 0;
            }
        } else if (errno != EWOULDBLOCK) {
            return false;
        }
        if (steady_clock::now() >= end) {
            errno = EBUSY;
            return false;
        }
        std::this_thread::sleep_for(pause);
    }
}

bool AtomicFile::Flush() {
    return fsync(m_file.get()) == 0;
}

bool AtomicFile::KeepAttributes() {
    const std::string target = common::ToNameBytes(m_target);
    if (!IsReplaceable(target)) {
        errno = EACCES;
        return false;
    }
    struct stat about = {};
    return stat(target.c_str(), &about) != 0 || fchmod(m_file.get(), about.st_mode & kPermissions) == 0;
}

bool AtomicFile::Replace(const std::function<void()>& beforeReplace) {
    if (beforeReplace) {
        beforeReplace();
    }
    const std::string target = common::ToNameBytes(m_target);
    if (rename(common::ToNameBytes(m_temporary).c_str(), target.c_str()) != 0) {
        return false;
    }
    m_exists = false;
    FlushFolder(FolderOf(target));
    return true;
}

void AtomicFile::Discard() {
    if (m_exists) { // while it is locked, so that it cannot be the next owner's
        unlink(common::ToNameBytes(m_temporary).c_str());
    }
    m_exists = false;
    m_file.reset();
}

} // namespace mxovshare
