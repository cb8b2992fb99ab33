#include "common/FileBytes.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/SystemError.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace common {

namespace {

bool WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return fsync(file) == 0;
}

bool WriteNew(const std::string& path, std::string_view bytes) {
    const UniqueHandle file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666));
    return file && WriteAll(file.get(), bytes);
}

} // namespace

DWORD ReadBeginning(const std::wstring& path, std::size_t count, std::string& bytes, std::uint64_t& size) {
    // What is no file, such as a pipe, does not block.
    const UniqueHandle file(open(FilePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat about = {};
    bytes.resize(count);
    const ssize_t done = file && fstat(file.get(), &about) == 0 ? read(file.get(), bytes.data(), count) : -1;
    if (done < 0) {
        return LastError();
    }
    bytes.resize(static_cast<std::size_t>(done));
    size = static_cast<std::uint64_t>(about.st_size);
    return ERROR_SUCCESS;
}

DWORD ReplaceFileWith(const std::wstring& path, std::string_view bytes) {
    const std::string target = FilePath(path);
    const std::string incomplete = target + ".mxov-new";
    if (WriteNew(incomplete, bytes) && rename(incomplete.c_str(), target.c_str()) == 0) {
        return ERROR_SUCCESS;
    }
    const DWORD error = LastError();
    unlink(incomplete.c_str());
    return error;
}

} // namespace common
