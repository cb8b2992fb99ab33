// CListCtrl: a list view.
//
// Covered: columns, items and their texts, selection, image lists, as documented below; each member is one
// message. Not covered: groups, tiles, editing, sorting, dragging.
#pragma once

#include "ImageList.h"
#include "Wnd.h"

class CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)

public:
    CListCtrl() = default;

    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    /// The new column's place, or -1. Width in pixels, -1 for none given.
    int InsertColumn(int nCol, const LVCOLUMN* pColumn) noexcept;
    int InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1,
                     int nSubItem = -1) noexcept;
    BOOL GetColumn(int nCol, LVCOLUMN* pColumn) const noexcept;
    int GetColumnWidth(int nCol) const noexcept;
    BOOL SetColumnWidth(int nCol, int cx) noexcept;

    int GetItemCount() const noexcept { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }
    /// A virtual list has so many items from now on; another one makes room for them.
    void SetItemCount(int nItems) noexcept { SendMessage(LVM_SETITEMCOUNT, static_cast<WPARAM>(nItems)); }
    /// The new item's place, or -1.
    int InsertItem(const LVITEM* pItem) noexcept;
    int InsertItem(int nItem, LPCTSTR lpszItem) noexcept;
    int InsertItem(int nItem, LPCTSTR lpszItem, int nImage) noexcept;
    BOOL DeleteItem(int nItem) noexcept;
    BOOL DeleteAllItems() noexcept { return static_cast<BOOL>(SendMessage(LVM_DELETEALLITEMS)); }

    BOOL GetItem(LVITEM* pItem) const noexcept;
    BOOL SetItemText(int nItem, int nSubItem, LPCTSTR lpszText) noexcept;
    int GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const noexcept;
    CString GetItemText(int nItem, int nSubItem) const;
    BOOL SetItemState(int nItem, UINT nState, UINT nMask) noexcept;
    UINT GetItemState(int nItem, UINT nMask) const noexcept;

    /// The next item after nItem (-1: from the start) that fits the LVNI_ flags, or -1.
    int GetNextItem(int nItem, int nFlags) const noexcept;

    DWORD GetExtendedStyle() const noexcept;
    DWORD SetExtendedStyle(DWORD dwNewStyle) noexcept;
    /// The list attached before, as a temporary object, or null.
    CImageList* SetImageList(CImageList* pImageList, int nImageListType);
    BOOL Arrange(UINT nCode) noexcept { return static_cast<BOOL>(SendMessage(LVM_ARRANGE, nCode)); }

private:
    using CWnd::Create;
};
