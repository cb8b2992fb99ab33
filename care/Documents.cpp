#include "care/Documents.h"

#include "common/LongPath.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/ItemText.h>
#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

std::vector<mxovshare::InformationChange> KeysOf(const Document& document) {
    return {{document.section, inikey::kIsReferenced, document.isCopy ? L"NO" : L"YES"},
            {document.section, inikey::kDescription, document.description},
            {document.section, inikey::kTimestamp, document.timestamp},
            {document.section, inikey::kFilePath, document.path}};
}

std::wstring DateOfFile(const std::wstring& path) {
    const FileStatus status = StatusOfFile(common::LongPath(path));
    if (!status.exists || status.isFolder) {
        throw Refusal{L"cannot add \"" + path + L"\": " +
                      (status.exists ? L"it is a folder" : L"it does not exist")};
    }
    return FormatFileTime(status.lastWrite);
}

std::vector<std::wstring> EntriesOfList(const std::wstring& list) {
    std::vector<std::wstring> entries;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(L';', start), list.size());
        entries.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return entries;
}

std::wstring FolderOfList(const std::wstring& list, const std::wstring& usual) {
    const std::wstring first = FirstEntry(list);
    return first.empty() ? usual : first.substr(0, first.rfind(L'\\') + 1);
}

bool IsInListFolder(const std::wstring& file, const Sections& sections, std::wstring_view key) {
    const std::wstring list = sections.Value(inikey::kFileInfo, key);
    return !FirstEntry(list).empty() &&
           common::IsSamePath(file.substr(0, file.rfind(L'\\') + 1), FolderOfList(list, {}));
}

} // namespace care
