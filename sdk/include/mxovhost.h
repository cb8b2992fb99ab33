/* What hosts ask of the dialog of an active MXOVDocView control, in C and C++. Everything goes through
   documented window messages and the identifiers below, which stay the same within a major version. Call
   these functions on the thread of the control. None fails loudly: without a dialog they return 0, NULL or -1
   and do nothing. */
#ifndef MXOVHOST_H
#define MXOVHOST_H

#include <windows.h>

#include <commctrl.h>
#include <ocidl.h>
#include <ole2.h>

/* Members of _DMXOVDocView, for IDispatch::Invoke. */
enum MxovMember {
    MXOV_INPUT_PARAMETER = 1,
    MXOV_CLEAR_ALL_DATA = 2,
    MXOV_ON_SIZE_CHANGE = 5,
    MXOV_LOAD_FILE = 6,
    MXOV_CLOSE = 7
};

/* The four lists, in their order on the dialog. */
enum MxovList {
    MXOV_PART_LIST = 1004,
    MXOV_GCODE_LIST = 1005,
    MXOV_SETUP_LIST = 1006,
    MXOV_ADDITIONAL_LIST = 1007
};

/* The buttons of the dialog. */
enum MxovButton {
    MXOV_SAVE_BUTTON = 1039,
    MXOV_ADD_BUTTON = 1040,
    MXOV_DELETE_BUTTON = 1041,
    MXOV_UPDATE_BUTTON = 1042
};

#ifdef __cplusplus
#define MXOV_CALL(object, method) (object)->method(
#define MXOV_CALL0(object, method) (object)->method()
#else
#define MXOV_CALL(object, method) (object)->lpVtbl->method((object),
#define MXOV_CALL0(object, method) (object)->lpVtbl->method(object)
#endif

/* The dialog of the control; NULL while the control is not active. */
static inline HWND MxovDialog(IUnknown* control) {
    HWND window = NULL;
    void* found = NULL;
#ifdef __cplusplus
    const HRESULT asked = MXOV_CALL(control, QueryInterface) IID_IOleWindow, &found);
#else
    const HRESULT asked = MXOV_CALL(control, QueryInterface) &IID_IOleWindow, &found);
#endif
    if (SUCCEEDED(asked)) {
        IOleWindow* owner = (IOleWindow*)found;
        MXOV_CALL(owner, GetWindow) &window);
        MXOV_CALL0(owner, Release);
    }
    return window ? GetWindow(window, GW_CHILD) : NULL;
}

/* Whether documents were added, removed or edited since the last save: the Save button is enabled exactly
 * then. */
static inline BOOL MxovHasUnsavedChanges(HWND dialog) {
    const HWND save = GetDlgItem(dialog, MXOV_SAVE_BUTTON);
    return save != NULL && IsWindowEnabled(save);
}

/* Saves as the Save button does; does nothing while there are no unsaved changes. The control shows progress
   and failures. Returns whether nothing is unsaved now. */
static inline BOOL MxovSaveNow(HWND dialog) {
    if (MxovHasUnsavedChanges(dialog)) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(MXOV_SAVE_BUTTON, BN_CLICKED),
                     (LPARAM)GetDlgItem(dialog, MXOV_SAVE_BUTTON));
    }
    return !MxovHasUnsavedChanges(dialog);
}

/* The list and the row, from 0, of the selected document that has the focus or is first; -1 when none is
 * selected. */
static inline int MxovSelectedDocument(HWND dialog, enum MxovList* list) {
    int id;
    for (id = MXOV_PART_LIST; id <= MXOV_ADDITIONAL_LIST; ++id) {
        const HWND view = GetDlgItem(dialog, id);
        const int row = view ? (int)SendMessageW(view, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_SELECTED) : -1;
        if (row >= 0) {
            *list = (enum MxovList)id;
            return row;
        }
    }
    return -1;
}

/* The text of a row of a list: column 0 is the name, 1 the size, 2 the date. `length`: characters of `text`,
   with the one that ends it. Returns whether there is such a row. */
static inline BOOL MxovDocumentText(HWND dialog, enum MxovList list, int row, int column, wchar_t* text,
                                    int length) {
    const HWND view = GetDlgItem(dialog, list);
    LVITEMW item;
    if (view == NULL || row < 0 || row >= (int)SendMessageW(view, LVM_GETITEMCOUNT, 0, 0)) {
        return FALSE;
    }
    ZeroMemory(&item, sizeof item);
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = length;
    SendMessageW(view, LVM_GETITEMTEXTW, (WPARAM)row, (LPARAM)&item);
    return TRUE;
}

/* The properties window that is open for `frame`, the top-level window of the host; NULL when there is none.
   A host places it with SetWindowPos, and destroys it before it closes the package. */
static inline HWND MxovPropertiesWindow(HWND frame) {
    enum { PROPERTIES_BOX = 1030 }; /* only this window has one */
    HWND window = NULL;
    while ((window = FindWindowExW(NULL, window, L"#32770", NULL)) != NULL) {
        if (GetWindow(window, GW_OWNER) == frame && GetDlgItem(window, PROPERTIES_BOX) != NULL) {
            break;
        }
    }
    return window;
}

#endif
