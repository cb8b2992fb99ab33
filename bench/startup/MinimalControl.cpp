// A control with one list view and nothing else: what the container, the framework and the system cost. Built
// as a library of its own, as every control is.
#include "afxcmn.h"
#include "afxctl.h"

namespace {

class MinimalControl : public COleControl {
    DECLARE_DYNCREATE(MinimalControl)
    DECLARE_OLECREATE_EX(MinimalControl)

public:
    UINT GetUserTypeNameID() override { return 0; }
    DWORD GetMiscStatus() override { return OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_INSIDEOUT; }
    void OnDraw(CDC* dc, const CRect& bounds, const CRect& invalid) override;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT createStruct);
    DECLARE_MESSAGE_MAP()

private:
    CListCtrl m_list;
};

CWinApp theApp;

BEGIN_MESSAGE_MAP(MinimalControl, COleControl)
    ON_WM_CREATE()
END_MESSAGE_MAP()

IMPLEMENT_DYNCREATE(MinimalControl, COleControl)
IMPLEMENT_OLECREATE_EX(MinimalControl, "MinimalControl.1", 0x5a1f7c24, 0x93d0, 0x4b8e, 0x8e, 0x61, 0x1c, 0x0b,
                       0x75, 0xd2, 0x4f, 0x39)

BOOL MinimalControl::MinimalControlFactory::UpdateRegistry(BOOL /*bRegister*/) {
    return TRUE; // its class is registered by the program that uses it
}

int MinimalControl::OnCreate(LPCREATESTRUCT createStruct) {
    if (COleControl::OnCreate(createStruct) == -1) {
        return -1;
    }
    const CRect area(0, 0, createStruct->cx, createStruct->cy);
    m_list.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT, area, this, 1);
    for (const int width : {150, 40, 150}) {
        m_list.InsertColumn(0, L"Column", LVCFMT_LEFT, width);
    }
    return 0;
}

void MinimalControl::OnDraw(CDC* dc, const CRect& bounds, const CRect& /*invalid*/) {
    m_list.MoveWindow(bounds, TRUE);
    dc->FillSolidRect(bounds, ::GetSysColor(COLOR_WINDOW));
}

} // namespace
