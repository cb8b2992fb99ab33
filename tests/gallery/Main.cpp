// Shows the group boxes to a person, who can try everything they do.
#include "GalleryDlg.h"

#include <commctrl.h>

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPWSTR /*commandLine*/, int /*show*/) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    GalleryDlg gallery;
    return gallery.DoModal() == IDCANCEL ? 0 : 1;
}
