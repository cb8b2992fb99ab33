#include "package/PackageSummary.h"

#include "common/InformationFile.h"
#include "mxovshare.h"
#include "package/Paths.h"

#include <shlwapi.h>

namespace viewer {

using mxovshare::INIFile;

namespace {

std::wstring InformationFile(const std::wstring& folder) {
    const std::wstring file = folder + common::kInformationFile;
    return FileExists(file) ? file : folder + common::kPrivateInformationFile;
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

std::wstring SizeText(std::uint64_t bytes) {
    wchar_t text[32] = L"";
    StrFormatByteSizeW(static_cast<LONGLONG>(bytes), text, ARRAYSIZE(text));
    return text;
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

std::wstring CountsText(const std::vector<mxovshare::PackageEntry>& entries) {
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    for (const mxovshare::PackageEntry& entry : entries) {
        files += entry.isFolder ? 0 : 1;
        bytes += entry.size;
    }
    if (files == 0) {
        return {};
    }
    return std::to_wstring(files) + (files == 1 ? L" file, " : L" files, ") + SizeText(bytes);
}

} // namespace viewer
