#include "package/Attachment.h"

#include "common/SystemError.h"
#include "mxovshare.h"
#include "package/CopyName.h"
#include "package/DiskCatalogueSource.h"
#include "package/ItemText.h"
#include "package/PackageInformation.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <windows.h>

namespace viewer {

namespace {

using mxovshare::INIFile;

constexpr int kMostNumbers = 10000;

// Copies a file below the folder of copies under a name that is free, which it returns. Empty on failure,
// with the last error set.
std::wstring CopyIntoPackage(const std::wstring& folder, const std::wstring& file) {
    CreateDirectoryW((folder + docview::kCopiesFolder).c_str(), nullptr);
    std::wstring name = FileName(file);
    for (int number = 2; number < kMostNumbers; ++number) {
        std::wstring stored = docview::kCopiesFolder + name;
        if (CopyFileW(file.c_str(), (folder + stored).c_str(), TRUE)) {
            return stored;
        }
        if (GetLastError() != ERROR_FILE_EXISTS) {
            return {};
        }
        name = NumberedName(FileName(file), number);
    }
    return {};
}

void WriteSection(const std::wstring& information, const std::wstring& stored, AttachMode mode,
                  const FILETIME& modified) {
    using namespace docview::inikey;
    const std::wstring section =
        docview::AdditionalSection(docview::DiskCatalogueSource(information),
                                   INIFile::GetLastIndexOfSectionFromINI(kAdditionalPrefix, information));
    INIFile::AddRecordToINI(section, kIsReferenced, mode == AttachMode::Link ? L"YES" : L"NO", information);
    INIFile::AddRecordToINI(section, kDescription, L"-", information);
    INIFile::AddRecordToINI(section, kTimestamp, FormatFileTime(modified), information);
    INIFile::AddRecordToINI(section, kFilePath, stored, information);
}

} // namespace

bool TakesDocuments(const std::wstring& folder) {
    return docview::IsRecentVersion(INIFile::GetKeyValueFromINI(
        docview::inikey::kFileInfo, docview::inikey::kVersion, docview::FindInformationFile(folder)));
}

std::wstring AttachDocuments(const std::wstring& folder, const std::vector<std::wstring>& files,
                             AttachMode mode) {
    const std::wstring information = docview::FindInformationFile(folder);
    std::wstring refused;
    for (const std::wstring& file : files) {
        if (FolderExists(file)) {
            refused += Text(IDS_FOLDER_NOT_ATTACHED, {FileName(file)}) + L"\n";
            continue;
        }
        const std::wstring stored = mode == AttachMode::Link ? file : CopyIntoPackage(folder, file);
        if (stored.empty()) {
            refused +=
                Text(IDS_COPY_FAILED, {FileName(file), common::SystemErrorText(GetLastError())}) + L"\n";
            continue;
        }
        WriteSection(information, stored, mode, LastWriteOf(file));
    }
    return refused;
}

} // namespace viewer
