// The dialog's list views and buttons: images, columns, selection.
#include "MXOVDocViewActiveXDlg.h"

#include "controls/RedrawPause.h"
#include "ListSelection.h"
#include "package/RecordLists.h"
#include "popup/MXOVPopupDlg.h"
#include "shell/HostText.h"

#include <iterator>

using namespace docview;

namespace {

constexpr int kLargeImage = 32; // pixels
constexpr int kSmallImage = 16;
constexpr int kInitialImages = 8;
constexpr int kImageGrowth = 1;
constexpr COLORREF kWhite = RGB(255, 255, 255);

struct Column {
    UINT title;
    int width; // pixels
};

constexpr Column kColumns[] = {
    {hosttext::kNameColumn, 150}, {hosttext::kSizeColumn, 40}, {hosttext::kDateColumn, 150}};

/// Loads a bitmap of the module in its stored format, without converting it to the screen's.
void LoadPicture(CBitmap& bitmap, UINT id) {
    bitmap.DeleteObject();
    bitmap.Attach(
        ::LoadImage(AfxGetResourceHandle(), MAKEINTRESOURCE(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
}

void CreateImages(CImageList& images, int size, UINT strip) {
    images.DeleteImageList(); // left by an earlier window
    images.Create(size, size, ILC_MASK | ILC_COLOR8, kInitialImages, kImageGrowth);
    CBitmap bitmap;
    LoadPicture(bitmap, strip);
    images.Add(&bitmap, kWhite);
}

void LoadButtonImage(CBitmap& bitmap, UINT id, CButton& button) {
    LoadPicture(bitmap, id);
    button.SetBitmap(bitmap);
}

} // namespace

void MXOVDocViewActiveXDlg::CreateImageLists() {
    CreateImages(m_largeImages, kLargeImage, IDB_DOCUMENTS_LARGE);
    CreateImages(m_smallImages, kSmallImage, IDB_DOCUMENTS_SMALL);
}

void MXOVDocViewActiveXDlg::SetUpList(CListCtrl& list) {
    const RedrawPause pause(list);
    int place = 0;
    for (const Column& column : kColumns) {
        list.InsertColumn(place++, HostText(column.title).c_str(), LVCFMT_LEFT, column.width);
    }
    list.SetExtendedStyle(list.GetExtendedStyle() | LVS_EX_FULLROWSELECT);
    list.SetImageList(&m_largeImages, LVSIL_NORMAL);
    list.SetImageList(&m_smallImages, LVSIL_SMALL);
}

void MXOVDocViewActiveXDlg::LoadButtonImages() {
    m_addButton.SubclassDlgItem(IDC_ADD, this);
    m_deleteButton.SubclassDlgItem(IDC_DELETE, this);
    LoadButtonImage(m_addBitmap, IDB_ADD, m_addButton);
    LoadButtonImage(m_deleteBitmap, IDB_DELETE, m_deleteButton);
}

CListCtrl* MXOVDocViewActiveXDlg::ListOf(DocumentCategory category) {
    switch (category) {
    case DocumentCategory::PartAssembly:
        return &m_partList;
    case DocumentCategory::GCode:
        return &m_gCodeList;
    case DocumentCategory::SetupSheets:
        return &m_setupList;
    case DocumentCategory::AdditionalDocument:
        return &m_additionalList;
    }
    return nullptr;
}

void MXOVDocViewActiveXDlg::ClickPackageDocument(DocumentCategory category) {
    EnableDeleteButton(false);
    CListCtrl& list = *ListOf(category);
    const int item = SelectedItem(list);
    if (item >= 0) {
        ShowDocumentProperties(category, item);
        list.SetFocus();
    }
}

void MXOVDocViewActiveXDlg::ShowDocumentProperties(DocumentCategory category, int item) {
    if (item >= std::ssize(*RecordsOf(category))) {
        return;
    }
    if (MXOVPopupDlg* popup = MXOVPopupDlg::Open(*this)) {
        popup->FillProperties(m_thumbnailPath, m_history, category, item, m_informationFile, m_packageFolder,
                              m_packageFile, m_recentPackage != FALSE);
        popup->PlaceBeside(m_width);
        popup->ShowWindow(SW_SHOW);
    }
}

void MXOVDocViewActiveXDlg::EnableItem(int id, bool enable) {
    CWnd* item = GetDlgItem(id);
    if (!item) {
        return;
    }
    if (!enable && ::GetFocus() == item->GetSafeHwnd()) {
        SendMessage(WM_NEXTDLGCTL); // a disabled control with the focus would swallow the keyboard
    }
    item->EnableWindow(enable);
    item->Invalidate();
}

void MXOVDocViewActiveXDlg::EnableDeleteButton(bool enable) {
    EnableItem(IDC_DELETE, enable);
}
