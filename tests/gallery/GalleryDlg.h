// The gallery of group boxes.
#pragma once

#include "CollapsePage.h"
#include "SectionPage.h"

/// A dialog that shows both kinds of group box, each with all it can do, and what the boxes report.
class GalleryDlg : public CDialog {
public:
    GalleryDlg();

protected:
    BOOL OnInitDialog() override;

private:
    void Record(const CString& event);

    SectionPage m_sections;
    CollapsePage m_collapsible;
};
