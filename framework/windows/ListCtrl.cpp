#include "ListCtrl.h"

namespace {

LPARAM ToParameter(const void* structure) noexcept {
    return reinterpret_cast<LPARAM>(structure);
}

/// An item of one list view text; the control only reads the text.
LVITEM TextItem(int item, int subItem, LPCTSTR text) noexcept {
    LVITEM description = {};
    description.mask = LVIF_TEXT;
    description.iItem = item;
    description.iSubItem = subItem;
    description.pszText = const_cast<LPTSTR>(text);
    return description;
}

} // namespace

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(WC_LISTVIEW, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CListCtrl::InsertColumn(int nCol, const LVCOLUMN* pColumn) noexcept {
    return static_cast<int>(SendMessage(LVM_INSERTCOLUMN, static_cast<WPARAM>(nCol), ToParameter(pColumn)));
}

int CListCtrl::InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat, int nWidth,
                            int nSubItem) noexcept {
    LVCOLUMN column = {};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = const_cast<LPTSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    if (nWidth != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}

BOOL CListCtrl::GetColumn(int nCol, LVCOLUMN* pColumn) const noexcept {
    return static_cast<BOOL>(SendMessage(LVM_GETCOLUMN, static_cast<WPARAM>(nCol), ToParameter(pColumn)));
}

int CListCtrl::GetColumnWidth(int nCol) const noexcept {
    return static_cast<int>(SendMessage(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(nCol)));
}

BOOL CListCtrl::SetColumnWidth(int nCol, int cx) noexcept {
    return static_cast<BOOL>(SendMessage(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(nCol), MAKELPARAM(cx, 0)));
}

int CListCtrl::InsertItem(const LVITEM* pItem) noexcept {
    return static_cast<int>(SendMessage(LVM_INSERTITEM, 0, ToParameter(pItem)));
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem) noexcept {
    const LVITEM item = TextItem(nItem, 0, lpszItem);
    return InsertItem(&item);
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem, int nImage) noexcept {
    LVITEM item = TextItem(nItem, 0, lpszItem);
    item.mask |= LVIF_IMAGE;
    item.iImage = nImage;
    return InsertItem(&item);
}

BOOL CListCtrl::DeleteItem(int nItem) noexcept {
    return static_cast<BOOL>(SendMessage(LVM_DELETEITEM, static_cast<WPARAM>(nItem)));
}

BOOL CListCtrl::GetItem(LVITEM* pItem) const noexcept {
    return static_cast<BOOL>(SendMessage(LVM_GETITEM, 0, ToParameter(pItem)));
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText) noexcept {
    const LVITEM item = TextItem(nItem, nSubItem, lpszText);
    return static_cast<BOOL>(SendMessage(LVM_SETITEMTEXT, static_cast<WPARAM>(nItem), ToParameter(&item)));
}

int CListCtrl::GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const noexcept {
    LVITEM item = TextItem(nItem, nSubItem, lpszText);
    item.cchTextMax = nLen;
    return static_cast<int>(SendMessage(LVM_GETITEMTEXT, static_cast<WPARAM>(nItem), ToParameter(&item)));
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const {
    CString text;
    int room = 128;
    int copied = 0;
    do { // the message returns no length: a full buffer may hold only the beginning
        room *= 2;
        copied = GetItemText(nItem, nSubItem, text.GetBuffer(room), room);
    } while (copied == room - 1);
    text.ReleaseBuffer(copied);
    return text;
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask) noexcept {
    LVITEM item = {};
    item.state = nState;
    item.stateMask = nMask;
    return static_cast<BOOL>(SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(nItem), ToParameter(&item)));
}

UINT CListCtrl::GetItemState(int nItem, UINT nMask) const noexcept {
    return static_cast<UINT>(
        SendMessage(LVM_GETITEMSTATE, static_cast<WPARAM>(nItem), static_cast<LPARAM>(nMask)));
}

int CListCtrl::GetNextItem(int nItem, int nFlags) const noexcept {
    return static_cast<int>(
        SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(nItem), MAKELPARAM(static_cast<UINT>(nFlags), 0)));
}

DWORD CListCtrl::GetExtendedStyle() const noexcept {
    return static_cast<DWORD>(SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE));
}

DWORD CListCtrl::SetExtendedStyle(DWORD dwNewStyle) noexcept {
    return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(dwNewStyle)));
}

CImageList* CListCtrl::SetImageList(CImageList* pImageList, int nImageListType) {
    const HIMAGELIST images = pImageList ? pImageList->m_hImageList : nullptr;
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(
        SendMessage(LVM_SETIMAGELIST, static_cast<WPARAM>(nImageListType), ToParameter(images))));
}
