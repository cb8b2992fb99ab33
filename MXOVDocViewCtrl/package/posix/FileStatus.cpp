#include "package/FileStatus.h"

#include "common/Clock.h"
#include "common/LongPath.h"

#include <cerrno>

#include <sys/stat.h>

namespace docview {

namespace {

/// Whether an error means that the other computer, and not its file system, was the obstacle.
bool IsTimeOut(int error) {
    switch (error) {
    case ETIMEDOUT:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ENETDOWN:
    case ENETUNREACH:
    case ECONNREFUSED:
    case ENOTCONN:
        return true;
    default:
        return false;
    }
}

} // namespace

FileStatus StatusOfFile(const std::wstring& path) {
    struct stat about = {};
    if (stat(common::FilePath(path).c_str(), &about) != 0) {
        return {.noAnswer = IsTimeOut(errno)};
    }
    return {.exists = true,
            .isFolder = S_ISDIR(about.st_mode),
            .size = static_cast<std::uint64_t>(about.st_size),
            .lastWrite = common::ToFileTime(about.st_mtim.tv_sec, about.st_mtim.tv_nsec)};
}

} // namespace docview
