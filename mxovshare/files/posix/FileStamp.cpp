#include "files/FileStamp.h"

#include "common/LongPath.h"

#include <sys/stat.h>

namespace mxovshare {

namespace {

std::int64_t TicksOf(const timespec& time) {
    return std::int64_t{time.tv_sec} * 10'000'000 + time.tv_nsec / 100 + 116'444'736'000'000'000;
}

FileStamp StampOf(const struct stat& about) {
    return {.exists = true,
            .size = about.st_size,
            .created = static_cast<std::int64_t>(about.st_ino), // with which another file would differ
            .written = TicksOf(about.st_mtim),
            .changed = TicksOf(about.st_ctim)};
}

} // namespace

FileStamp StampOf(const std::wstring& path) {
    struct stat about = {};
    return stat(common::FilePath(path).c_str(), &about) == 0 ? StampOf(about) : FileStamp{};
}

FileStamp StampOf(HANDLE file) {
    struct stat about = {};
    return fstat(file, &about) == 0 ? StampOf(about) : FileStamp{};
}

} // namespace mxovshare
