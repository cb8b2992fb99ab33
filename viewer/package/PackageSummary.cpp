#include "package/PackageSummary.h"

#include "mxovshare.h"
#include "package/Paths.h"

#include <vector>

namespace viewer {

using mxovshare::INIFile;

namespace {

std::wstring InformationFile(const std::wstring& folder) {
    const std::wstring file = folder + L"mxinfo.ini";
    return FileExists(file) ? file : folder + L"Private\\mxinfo.ini";
}

std::wstring LastChange(const std::wstring& informationFile) {
    const std::vector<std::wstring> entries =
        INIFile::GetSectionNamesFromINI(L"FILE_HISTORY", informationFile);
    if (entries.empty()) {
        return {};
    }
    const auto value = [&](const wchar_t* key) {
        return INIFile::GetKeyValueFromINI(entries.back(), key, informationFile);
    };
    std::wstring line = value(L"Operation");
    if (const std::wstring by = value(L"By"); !by.empty()) {
        line += L" by " + by;
    }
    if (const std::wstring time = value(L"Time"); !time.empty()) {
        line += L", " + time;
    }
    return line;
}

} // namespace

PackageSummary ReadPackageSummary(const std::wstring& folder, const std::wstring& packageFile) {
    const std::wstring information = InformationFile(folder);
    PackageSummary summary;
    summary.name = FileStem(packageFile);
    summary.version = INIFile::GetKeyValueFromINI(L"FILEINFO", L"MaxtlreVersion", information);
    const std::wstring thumbnail = INIFile::GetKeyValueFromINI(L"FILEINFO", L"Thumbnail", information);
    if (!thumbnail.empty()) {
        summary.previewFile = folder + thumbnail;
    }
    summary.lastChange = LastChange(information);
    return summary;
}

} // namespace viewer
