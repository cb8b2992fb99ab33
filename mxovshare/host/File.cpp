#include "mxovshare.h"

#include "common/LongPath.h"

#include <cstdint>
#include <limits>

namespace mxovshare {

int File::GetFileSize(std::wstring path) {
    constexpr int kLargest = std::numeric_limits<int>::max();
    try {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        if (GetFileAttributesExW(common::LongPath(path).c_str(), GetFileExInfoStandard, &data) == FALSE ||
            (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            return 0;
        }
        const std::uint64_t size = static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
        return size > kLargest ? kLargest : static_cast<int>(size);
    } catch (...) {
        return 0;
    }
}

} // namespace mxovshare
