#include "care/Documents.h"

#include "common/LongPath.h"

#include <package/CatalogueLoader.h>
#include <package/DiskCatalogueSource.h>
#include <package/ItemText.h>
#include <package/PackageInformation.h>

using namespace docview;

namespace care {

std::vector<mxovshare::InformationChange> KeysOf(const Document& document) {
    return {{document.section, inikey::kIsReferenced, document.isCopy ? L"NO" : L"YES"},
            {document.section, inikey::kDescription, document.description},
            {document.section, inikey::kTimestamp, document.timestamp},
            {document.section, inikey::kFilePath, document.path}};
}

std::wstring DateOfFile(const std::wstring& path) {
    const FileStatus status = DiskCatalogueSource({}).Status(common::LongPath(path));
    if (!status.exists || status.isFolder) {
        throw Refusal{L"cannot add \"" + path + L"\": " +
                      (status.exists ? L"it is a folder" : L"it does not exist")};
    }
    return FormatFileTime(status.lastWrite);
}

std::wstring FolderOfList(const std::wstring& list, const std::wstring& usual) {
    const std::wstring first = FirstEntry(list);
    return first.empty() ? usual : first.substr(0, first.rfind(L'\\') + 1);
}

} // namespace care
