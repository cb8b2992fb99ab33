#include "care/FolderChanges.h"

#include "common/LongPath.h"
#include "common/SystemError.h"
#include "package/PackageInformation.h"
#include "package/Paths.h"
#include "texts/Texts.h"

namespace viewer {

namespace {

using mxovshare::INIFile;

// With the folders above it; 0 on success, else the system's code.
DWORD CopyInto(const std::wstring& folder, const mxovshare::AddedFile& added) {
    for (std::size_t end = added.name.find(L'\\'); end != std::wstring::npos;
         end = added.name.find(L'\\', end + 1)) {
        CreateDirectoryW(common::LongPath(folder + added.name.substr(0, end)).c_str(), nullptr);
    }
    const bool copied = CopyFileW(common::LongPath(added.path).c_str(),
                                  common::LongPath(folder + added.name).c_str(), FALSE) != FALSE;
    return copied ? ERROR_SUCCESS : GetLastError();
}

void Apply(const std::wstring& information, const mxovshare::InformationChange& change) {
    if (change.key.empty()) {
        INIFile::RemoveSectionFromINI(change.section, information);
    } else {
        INIFile::AddRecordToINI(change.section, change.key, change.value, information);
    }
}

} // namespace

std::wstring ApplyToFolder(const std::wstring& folder, const mxovshare::PackageChanges& changes) {
    for (const mxovshare::AddedFile& added : changes.added) {
        if (const DWORD error = CopyInto(folder, added)) {
            return Text(IDS_FILE_NOT_COPIED, {FileName(added.path), common::SystemErrorText(error)});
        }
    }
    const std::wstring information = docview::FindInformationFile(folder);
    for (const mxovshare::InformationChange& change : changes.information) {
        Apply(information, change);
    }
    for (const std::wstring& name : changes.removed) {
        const std::wstring file = common::LongPath(folder + name);
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL); // read-only files cannot be deleted
        DeleteFileW(file.c_str());
    }
    return {};
}

} // namespace viewer
