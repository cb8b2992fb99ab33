// COlePropertyPage: a dialog inside the system's property frame.
//
// Covered: the documented members below, and the exchange of texts with properties of the objects by name
// (DDP_Text). Not covered: the other DDP routines, help, controls without Apply.
#pragma once

#include "ole/OleTarget.h"
#include "PropertyPagePart.h"
#include "windows/DataExchange.h"
#include "windows/Dialog.h"

#include <vector>

class COlePropertyPage : public CDialog {
    DECLARE_DYNAMIC(COlePropertyPage)

public:
    /// Numbers of the dialog template, which is a child's, and of the caption's string.
    COlePropertyPage(UINT idDlg, UINT idCaption);
    ~COlePropertyPage() override;

    virtual HRESULT GetClassID(LPCLSID pclsid) = 0;

    /// TRUE: there are changes to apply; the frame is notified.
    void SetModifiedFlag(BOOL bModified = TRUE);
    BOOL IsModified() const noexcept { return m_modified; }

    virtual void OnSetPageSite();
    virtual void OnObjectsChanged();
    /// Gives the keyboard to what edits a property; FALSE when nothing does.
    virtual BOOL OnEditProperty(DISPID dispid);
    void OnFinalRelease() override;

protected:
    friend void AFXAPI DDP_Text(CDataExchange* pDX, int id, CString& member, LPCTSTR pszPropName);
    friend void AFXAPI DDP_PostProcessing(CDataExchange* pDX);

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;
    void OnCancel() override;
    DECLARE_INTERFACE_MAP()

private:
    friend class framework::PropertyPagePart;

    /// A text that is to be sent to a property.
    struct Pending {
        CString property;
        CString value;
    };

    void SendPending();

    UINT m_idDlg;
    UINT m_idCaption;
    bool m_modified = false;
    common::ComPtr<IPropertyPageSite> m_site;
    std::vector<common::ComPtr<IDispatch>> m_objects;
    std::vector<Pending> m_pending;
    framework::PropertyPagePart m_xPropertyPage{*this};
};

/// Exchanges a control's text with `member`, and `member` with a property of the objects being edited: read
/// from the first one, written by DDP_PostProcessing to all.
void AFXAPI DDP_Text(CDataExchange* pDX, int id, CString& member, LPCTSTR pszPropName);
/// Last call of a page's DoDataExchange: sends the values to the objects.
void AFXAPI DDP_PostProcessing(CDataExchange* pDX);
