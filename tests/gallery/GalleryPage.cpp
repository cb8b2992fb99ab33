#include "GalleryPage.h"

BOOL GalleryPage::Place(UINT templateId, CWnd& parent, int placeId) {
    if (!Create(templateId, &parent)) {
        return FALSE;
    }
    const CWnd* const placeholder = parent.GetDlgItem(placeId);
    CRect place;
    placeholder->GetWindowRect(&place);
    parent.ScreenToClient(&place);
    return SetWindowPos(placeholder, place.left, place.top, place.Width(), place.Height(), 0);
}

bool GalleryPage::IsChecked(int id) const {
    return GetDlgItem(id)->SendMessage(BM_GETCHECK) == BST_CHECKED;
}

void GalleryPage::Check(int id, bool checked) {
    GetDlgItem(id)->SendMessage(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}
