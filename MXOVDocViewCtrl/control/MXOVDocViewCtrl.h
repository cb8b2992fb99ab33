// The ActiveX control: a thin shell that turns the host's calls into calls on the dialog it owns.
#pragma once

#include "dialog/MXOVDocViewActiveXDlg.h"
#include "DialogControl.h"

#include "afxctl.h"

/// One control of a host; its dialog covers its whole area.
class CMXOVDocViewCtrl : public DialogControl {
    DECLARE_DYNCREATE(CMXOVDocViewCtrl)

public:
    CMXOVDocViewCtrl();

    void OnDraw(CDC* dc, const CRect& bounds, const CRect& invalid) override;
    void DoPropExchange(CPropExchange* px) override;
    void OnResetState() override;
    /// Publishes Alt+S, the key of "&Save", so that containers pass it also while another object is active.
    void OnGetControlInfo(LPCONTROLINFO controlInfo) override;
    void OnMnemonic(LPMSG message) override;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    BOOL IsSubclassedControl() override;
    /// TRUE always: scripts call members without initialising the control.
    BOOL IsInvokeAllowed(DISPID dispid) override;

    DECLARE_OLECREATE_EX(CMXOVDocViewCtrl)
    DECLARE_OLETYPELIB(CMXOVDocViewCtrl)
    DECLARE_PROPPAGEIDS(CMXOVDocViewCtrl)
    DECLARE_OLECTLTYPE(CMXOVDocViewCtrl)

    afx_msg int OnCreate(LPCREATESTRUCT createStruct);
    DECLARE_MESSAGE_MAP()

    void OnInputParameterChanged();
    void AboutBox();
    void ClearAllData();
    void OnSizeChange(LONG cx, LONG cy);
    void LoadFile(LPCTSTR bstrExtractedFolderPath, LPCTSTR bstrMXOVPkgFilePath);
    void Close();
    DECLARE_DISPATCH_MAP()

    /// Declared for existing hosts; never fired.
    void FireParameterLoaded() { FireEvent(eventidParameterLoaded, EVENT_PARAM(VTS_NONE)); }
    DECLARE_EVENT_MAP()

    enum {
        dispidInputParameter = 1,
        dispidClearAllData = 2,
        eventidParameterLoaded = 3,
        dispidOnSizeChange = 5,
        dispidLoadFile = 6,
        dispidClose = 7,
    };

private:
    MXOVDocViewActiveXDlg m_dialog;
    CString m_inputParameter;
    CString m_spare; // no member uses it
};
