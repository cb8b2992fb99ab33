// A half of the gallery.
#pragma once

#include "afxwin.h"

/// A child dialog that takes the place of a control of its parent. Each page is the parent of its own boxes,
/// so that one page's folding moves nothing of the other.
class GalleryPage : public CDialog {
public:
    /// Creates the page from its template over the control, and after it in the order of the tab key.
    BOOL Place(UINT templateId, CWnd& parent, int placeId);

protected:
    // Return and Escape belong to the gallery.
    void OnOK() override {}
    void OnCancel() override {}

    bool IsChecked(int id) const;
    void Check(int id, bool checked);
};
