// The popup's content: showing a document and writing changes into the information file.
#include "MXOVPopupDlg.h"

#include "common/Paths.h"
#include "common/ScopedFlag.h"
#include "controls/RedrawPause.h"
#include "package/BitmapFile.h"
#include "package/ItemText.h"
#include "package/PackageInformation.h"
#include "package/RecordLists.h"
#include "shell/HostText.h"
#include "shell/ModalScope.h"

#include "afxdlgs.h"

#include <mxovshare.h>

#include <iterator>
#include <limits>

#include <shlwapi.h>

using namespace docview;

namespace {

constexpr int kPreviewSide = 125;                              // pixels
constexpr int kAfterTheLast = std::numeric_limits<int>::max(); // place of a new column
constexpr const wchar_t* kLabelEnd = L" : ";

struct Label {
    int id;
    UINT text;
};

constexpr Label kLabels[] = {{IDC_SIZE_LABEL, hosttext::kSizeLabel},
                             {IDC_NAME_LABEL, hosttext::kNameLabel},
                             {IDC_PATH_LABEL, hosttext::kPathLabel},
                             {IDC_DESCRIPTION_LABEL, hosttext::kDescriptionLabel}};

struct Column {
    UINT title;
    int width; // pixels
};

constexpr Column kColumns[] = {
    {hosttext::kHistoryOperation, 55}, {hosttext::kHistoryTime, 90}, {hosttext::kHistoryBy, 80}};

/// The bitmap of a file at the size of the preview; empty when it cannot be loaded.
common::UniqueBitmap LoadPreviewFile(const std::wstring& path) {
    if (!PathExists(path) || !IsSoundBitmap(path)) {
        return nullptr;
    }
    return common::UniqueBitmap(static_cast<HBITMAP>(
        LoadImageW(nullptr, path.c_str(), IMAGE_BITMAP, kPreviewSide, kPreviewSide, LR_LOADFROMFILE)));
}

/// Filter of the file dialog that replaces a document.
const wchar_t* FilterFor(const std::wstring& fileName) {
    const wchar_t* extension = PathFindExtensionW(fileName.c_str());
    if (common::IsSamePath(extension, L".SLDPRT")) {
        return L"Part File (*.SLDPRT)|*.sldprt|";
    }
    if (common::IsSamePath(extension, L".SLDASM")) {
        return L"Assembly File (*.SLDASM)|*.sldasm|";
    }
    return L"All Files (*.*)|*.*|";
}

} // namespace

void MXOVPopupDlg::FillProperties(const std::wstring& previewPath, const std::vector<HistoryEntry>& history,
                                  DocumentCategory category, int index, const std::wstring& informationFile,
                                  const std::wstring& packageFolder, const std::wstring& packageFile,
                                  bool recent) {
    browsing = false;
    m_category = category;
    m_index = index;
    m_informationFile = informationFile;
    m_packageFolder = packageFolder;
    m_packageFile = packageFile;
    const RecordList* records = RecordsOf(category);
    if (!records || index < 0 || index >= std::ssize(*records)) {
        m_index = -1;
        return;
    }
    m_record = (*records)[static_cast<std::size_t>(index)];
    m_snapshot = m_record;
    ShowPreview(previewPath);
    ShowHistory(history);
    ShowFields(recent);
}

void MXOVPopupDlg::SetLabels() {
    for (const Label& label : kLabels) {
        SetDlgItemText(label.id, (HostText(label.text) + kLabelEnd).c_str());
    }
    SetDlgItemText(IDC_PROPERTIES_BOX, HostText(hosttext::kDocumentProperties).c_str());
}

void MXOVPopupDlg::ShowPreview(const std::wstring& path) {
    common::UniqueBitmap bitmap = LoadPreviewFile(path);
    std::wstring status;
    if (!bitmap) {
        bitmap = HostBitmap(hostbitmap::kNoPreview);
        status = HostText(hosttext::kNoPreview);
    }
    SetDlgItemText(IDC_PREVIEW_STATUS, status.c_str());
    ShowPicture(IDC_PREVIEW, m_previewBitmap, std::move(bitmap));
}

void MXOVPopupDlg::ShowHistory(const std::vector<HistoryEntry>& history) {
    const RedrawPause pause(m_history);
    for (const Column& column : kColumns) {
        // A popup that is filled again gets the columns once more.
        m_history.InsertColumn(kAfterTheLast, HostText(column.title).c_str(), LVCFMT_LEFT, column.width);
    }
    m_history.SetExtendedStyle(m_history.GetExtendedStyle() | LVS_EX_FULLROWSELECT);
    m_history.ShowEntries(history);
}

void MXOVPopupDlg::ShowFields(bool recent) {
    m_name.SetWindowText(m_record.fileName.c_str());
    if (m_record.isReferenced == 1) {
        m_pathText = m_record.filePath.c_str();
    } else {
        m_pathText.Empty();
        DisableItem(IDC_DOCUMENT_PATH);
        DisableItem(IDC_BROWSE);
    }
    ShowSize(PathExists(m_record.filePath) ? m_record.filePath : m_packageFolder + L"\\" + m_record.filePath);
    m_descriptionText = m_record.description.c_str();
    if (!recent) {
        DisableItem(IDC_DOCUMENT_PATH);
        DisableItem(IDC_BROWSE);
        DisableItem(IDC_DESCRIPTION);
    }
    UpdateData(FALSE);
}

void MXOVPopupDlg::ShowSize(const std::wstring& path) {
    m_size.SetWindowText(SizeText(mxovshare::File::GetFileSize(path)).c_str());
}

void MXOVPopupDlg::DisableItem(int id) {
    GetDlgItem(id)->EnableWindow(FALSE);
}

void MXOVPopupDlg::OnDescriptionChanged() {
    UpdateData(TRUE);
    m_record.description = m_descriptionText.GetString();
    SaveProperties();
}

void MXOVPopupDlg::OnBrowse() {
    const ModalScope modal(*m_owner);
    std::wstring chosen;
    {
        const common::ScopedFlag open(browsing);
        CFileDialog dialog(TRUE, L"*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                           FilterFor(m_record.fileName), this);
        if (dialog.DoModal() != IDOK) {
            return;
        }
        chosen = dialog.GetPathName().GetString();
    }
    if (current != this) {
        return; // the host closed the popup while the file dialog was open
    }
    m_record.filePath = chosen;
    m_name.SetWindowText(FileNameOf(chosen).c_str());
    m_pathText = chosen.c_str();
    ShowSize(chosen);
    m_descriptionText = m_record.description.c_str();
    UpdateData(FALSE);
    SaveProperties();
}

void MXOVPopupDlg::SaveProperties() {
    RecordList* records = RecordsOf(m_category);
    if (m_index < 0 || !records) {
        return;
    }
    // The host may have loaded another package meanwhile.
    DocumentRecord gone;
    DocumentRecord& shown =
        m_index < std::ssize(*records) ? (*records)[static_cast<std::size_t>(m_index)] : gone;
    shown.filePath = m_record.filePath;
    switch (m_category) {
    case DocumentCategory::PartAssembly:
        shown.description = m_record.description;
        WriteValue(inikey::kCadPath, m_record.filePath);
        WriteValue(inikey::kCadDescription, m_record.description);
        break;
    case DocumentCategory::GCode:
        ShareDescription(*records);
        WriteValue(inikey::kGCodeDescription, m_record.description);
        break;
    case DocumentCategory::SetupSheets:
        ShareDescription(*records);
        WriteValue(inikey::kSetupSheetsDescription, m_record.description);
        break;
    case DocumentCategory::AdditionalDocument:
        shown.description = m_record.description;
        WriteValue(inikey::kFilePath, m_record.filePath);
        WriteValue(inikey::kDescription, m_record.description);
        break;
    }
    PostUpdate();
}

void MXOVPopupDlg::ShareDescription(RecordList& records) {
    for (DocumentRecord& record : records) {
        record.description = m_record.description;
    }
}

void MXOVPopupDlg::WriteValue(const wchar_t* key, const std::wstring& value) {
    mxovshare::INIFile::AddRecordToINI(m_record.sectionName, key, value, m_informationFile);
}

void MXOVPopupDlg::PostUpdate() {
    const HWND owner = m_owner->GetSafeHwnd();
    const HWND update = owner ? ::GetDlgItem(owner, IDC_UPDATE) : nullptr;
    if (update) {
        ::PostMessageW(owner, WM_COMMAND, MAKEWPARAM(IDC_UPDATE, 0), reinterpret_cast<LPARAM>(update));
    }
}
