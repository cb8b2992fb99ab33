#include "common/InformationFile.h"

#include "PackageInformation.h"

#include <shlwapi.h>

namespace docview {

bool PathExists(const std::wstring& path) {
    return PathFileExistsW(path.c_str()) != FALSE;
}

std::wstring FindInformationFile(const std::wstring& packageFolder) {
    std::wstring beside = packageFolder + L"\\" + common::kInformationFile;
    return PathExists(beside) ? beside : packageFolder + common::kPrivateInformationFile;
}

} // namespace docview
