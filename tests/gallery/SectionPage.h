// The foldable sections of the gallery.
#pragma once

#include "afxcmn.h"
#include "controls/MXOVGroupBoxEx.h"
#include "GalleryPage.h"

/// Three sections, and in the first of them every operation that code can do to a section.
class SectionPage : public GalleryPage {
protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    afx_msg void OnShowTools();
    afx_msg void OnEnableTools();
    afx_msg void OnFoldTools();
    afx_msg void OnTaller();
    afx_msg void OnShorter();
    DECLARE_MESSAGE_MAP()

private:
    void FillTools();
    void ResizeNotes(int difference);

    MXOVGroupBoxEx m_operationsBox;
    MXOVGroupBoxEx m_toolsBox;
    MXOVGroupBoxEx m_notesBox;
    CListCtrl m_tools;
    CString m_notes = L"Clamp on the raw face first.\r\nProbe the bore before the second setup.";
};
