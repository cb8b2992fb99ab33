#include "care/UnpackedContent.h"

#include "package/Paths.h"

namespace viewer {

mxovshare::PackageResult ReadUnpacked(const std::wstring& folder, care::PackageContent& content) {
    mxovshare::PackageResult result = mxovshare::ListFolder(folder, content.entries);
    std::erase_if(content.entries, [](const mxovshare::PackageEntry& entry) {
        return mxovshare::IsOfficeLock(FileName(entry.name));
    });
    return result.ok ? mxovshare::ReadInformation(folder, content.sections) : result;
}

} // namespace viewer
