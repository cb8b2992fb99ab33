#include "care/check/FaultSearch.h"
#include "care/check/FindingForms.h"
#include "care/Documents.h"

#include <package/PackageInformation.h>
#include <package/PackagePath.h>

using namespace docview;

namespace care {

const wchar_t* PathFault(const std::wstring& path) {
    if (IsNetworkPath(path)) {
        return L"leads to another computer";
    }
    return LeavesPackageFolder(path) ? L"leaves the package folder" : nullptr;
}

const wchar_t* FaultOf(const std::wstring& path, bool isLink, OtherComputers others) {
    return isLink && others == OtherComputers::Asked && IsNetworkPath(path) ? nullptr : PathFault(path);
}

void FindErrors(const CheckedPackage& package, const FindingSink& take) {
    const auto check = [&](const std::wstring& section, const std::wstring& key, const std::wstring& path,
                           bool isLink) {
        if (FaultOf(path, isLink, package.others) != nullptr) {
            const bool isDocument = key == inikey::kFilePath;
            take(MakeFinding(IsNetworkPath(path) ? FindingText::OtherComputer : FindingText::LeavesFolder,
                             {section, key}, path, {isDocument ? section : key, path}));
        }
    };
    const auto fileInfo = [&package](const wchar_t* key) {
        return package.source.Value(inikey::kFileInfo, key);
    };
    for (const wchar_t* key : {inikey::kCadPath, inikey::kSetupSheets, inikey::kThumbnail}) {
        check(inikey::kFileInfo, key, fileInfo(key), key == inikey::kCadPath);
    }
    for (const std::wstring& path : EntriesOfList(fileInfo(inikey::kGCode))) {
        check(inikey::kFileInfo, inikey::kGCode, path, false);
    }
    for (const Section& section : package.sections) {
        if (IsAdditional(section)) {
            check(section.name, inikey::kFilePath, ValueOf(section, inikey::kFilePath), !IsCopy(section));
        }
    }
}

} // namespace care
