#include "care/Documents.h"

#include <package/PackageInformation.h>

namespace care {

void AddDocument(const Document& document, mxovshare::PackageChanges& changes) {
    const auto set = [&](const wchar_t* key, const std::wstring& value) {
        changes.information.push_back({document.section, key, value});
    };
    set(inikey::kIsReferenced, document.isCopy ? L"NO" : L"YES");
    set(inikey::kDescription, document.description);
    set(inikey::kTimestamp, document.timestamp);
    set(inikey::kFilePath, document.path);
}

} // namespace care
