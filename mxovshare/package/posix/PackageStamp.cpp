#include "package/PackageStamp.h"

#include "common/LongPath.h"

#include <sys/stat.h>

namespace mxovshare {

std::wstring StampOfPackage(const std::wstring& file) {
    struct stat about = {};
    if (stat(common::FilePath(file).c_str(), &about) != 0) {
        return {};
    }
    std::wstring stamp;
    for (const auto part :
         {static_cast<unsigned long long>(about.st_size),
          static_cast<unsigned long long>(about.st_mtim.tv_sec),
          static_cast<unsigned long long>(about.st_mtim.tv_nsec),
          static_cast<unsigned long long>(about.st_dev), static_cast<unsigned long long>(about.st_ino)}) {
        stamp += (stamp.empty() ? L"" : L"-") + std::to_wstring(part);
    }
    return stamp;
}

} // namespace mxovshare
