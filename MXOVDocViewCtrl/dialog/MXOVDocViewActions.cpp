// User actions on documents: open, add, remove.
#include "MXOVDocViewActiveXDlg.h"

#include "ListSelection.h"
#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"
#include "package/PackagePath.h"
#include "package/RecordLists.h"
#include "shell/HostText.h"
#include "shell/ModalScope.h"
#include "shell/MXOVCustomizeFileDialog.h"

#include <iterator>

#include <mxovshare.h>
#include <shellapi.h>

using namespace docview;

namespace {

/// Opens a file with the program that is associated with it. The result is ignored, and the process handle is
/// not closed.
void StartFile(const std::wstring& path) {
    SHELLEXECUTEINFOW start = {};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOCLOSEPROCESS;
    start.lpFile = path.c_str();
    start.nShow = SW_SHOWNORMAL;
    ShellExecuteExW(&start);
}

/// The record of a file that is being added. Only the information file gets a numbered section.
DocumentRecord NewRecord(const std::wstring& path, const FileStatus& status, bool linked) {
    DocumentRecord record;
    record.sectionName = inikey::kAdditionalPrefix;
    record.fileName = FileNameOf(path);
    record.timestamp = FormatFileTime(status.lastWrite);
    record.filePath = path;
    record.description = L"-";
    record.isReferenced = linked ? 1 : 0;
    record.isAdditional = 1;
    record.category = DocumentCategory::AdditionalDocument;
    return record;
}

} // namespace

void MXOVDocViewActiveXDlg::OpenSelectedDocument(DocumentCategory category) {
    const int item = SelectedItem(*ListOf(category));
    const RecordList& records = *RecordsOf(category);
    if (item >= 0 && item < std::ssize(records)) {
        // A copy: messages handled inside the message box or the shell's call may reload the catalogue.
        const DocumentRecord record = records[static_cast<std::size_t>(item)];
        OpenDocument(record);
    }
}

void MXOVDocViewActiveXDlg::OpenDocument(const DocumentRecord& record) {
    std::wstring path = record.filePath;
    if (!PathExists(path)) {
        if (record.isReferenced) {
            const ModalScope modal(*this);
            MessageBox(HostText(hosttext::kLinkNotFound).c_str(), kMessageTitle, MB_OK | MB_ICONEXCLAMATION);
            return;
        }
        path = m_packageFolder + L"\\" + record.filePath;
        if (!PathExists(path)) {
            return;
        }
    }
    StartFile(path);
}

void MXOVDocViewActiveXDlg::AddAdditionalDocument() {
    const ModalScope modal(*this);
    MXOVCustomizeFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                                   L"All Files (*.*)|*.*|", this);
    const HWND window = GetSafeHwnd();
    if (dialog.DoModal() != IDOK || GetSafeHwnd() != window) {
        return; // also when the control was closed while the file dialog was open
    }
    const std::wstring path = dialog.GetPathName().GetString();
    const bool linked = dialog.GetCheck() != 0;
    const DiskCatalogueSource source(m_informationFile);
    const FileStatus status = source.Status(path);
    const CatalogueItem item = {.record = NewRecord(path, status, linked),
                                .sizeText = DocumentSizeText(source, m_packageFolder, path, status),
                                .image = linked ? kLinkedImage : kPackedImage};
    additionalRecords.push_back(item.record);
    AddItemToList(item);
    WriteAdditionalDocument(item.record);
    SetModified(true);
}

void MXOVDocViewActiveXDlg::WriteAdditionalDocument(const DocumentRecord& record) {
    using mxovshare::INIFile;
    std::wstring storedPath = record.filePath;
    if (!record.isReferenced) {
        storedPath = kCopiesFolder + record.fileName;
        CopyFileW(record.filePath.c_str(), (m_packageFolder + storedPath).c_str(), FALSE);
    }
    const std::wstring section = AdditionalSection(
        DiskCatalogueSource(m_informationFile),
        INIFile::GetLastIndexOfSectionFromINI(inikey::kAdditionalPrefix, m_informationFile));
    INIFile::AddRecordToINI(section, inikey::kIsReferenced, record.isReferenced ? L"YES" : L"NO",
                            m_informationFile);
    INIFile::AddRecordToINI(section, inikey::kDescription, record.description, m_informationFile);
    INIFile::AddRecordToINI(section, inikey::kTimestamp, record.timestamp, m_informationFile);
    INIFile::AddRecordToINI(section, inikey::kFilePath, storedPath, m_informationFile);
}

void MXOVDocViewActiveXDlg::DeleteAdditionalDocument() {
    const int item = SelectedItem(m_additionalList);
    if (item < 0 || item >= std::ssize(additionalRecords)) {
        return;
    }
    const auto place = additionalRecords.begin() + item;
    RemoveAdditionalDocument(DocumentRecord(*place));
    m_additionalList.DeleteItem(item);
    additionalRecords.erase(place);
    ListRows& rows = RowsOf(DocumentCategory::AdditionalDocument);
    rows.erase(rows.begin() + item);
    m_additionalList.Arrange(LVA_DEFAULT);
    SetModified(true);
    EnableDeleteButton(false);
}

void MXOVDocViewActiveXDlg::RemoveAdditionalDocument(const DocumentRecord& record) {
    mxovshare::INIFile::RemoveSectionFromINI(record.sectionName, m_informationFile);
    // A package from elsewhere may name any file: only what lies inside goes.
    if (!record.isReferenced && !LeavesPackageFolder(record.filePath)) {
        DeleteFileW((m_packageFolder + record.filePath).c_str());
    }
}
