#include "package/PackageStamp.h"

#include "common/Handles.h"
#include "common/LongPath.h"

namespace mxovshare {

std::wstring StampOfPackage(const std::wstring& file) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const common::UniqueHandle handle =
        common::OwnFile(CreateFileW(common::LongPath(file).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION about = {};
    if (!handle || GetFileInformationByHandle(handle.get(), &about) == FALSE) {
        return {};
    }
    std::wstring stamp;
    for (const DWORD part : {about.nFileSizeHigh, about.nFileSizeLow, about.ftLastWriteTime.dwHighDateTime,
                             about.ftLastWriteTime.dwLowDateTime, about.dwVolumeSerialNumber,
                             about.nFileIndexHigh, about.nFileIndexLow}) {
        stamp += (stamp.empty() ? L"" : L"-") + std::to_wstring(part);
    }
    return stamp;
}

} // namespace mxovshare
