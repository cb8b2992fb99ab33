#include "MXOVDocViewCtrl.h"

#include "common/Handles.h"
#include "MXOVDocViewApp.h"
#include "MXOVDocViewPropPage.h"
#include "package/PackageInformation.h"

#include <algorithm>
#include <array>

#include <MXOVDocView.h>

namespace {

constexpr int kInitialWidth = 371; // pixels of the dialog template with the usual dialog font
constexpr int kInitialHeight = 475;
constexpr DWORD kMiscStatus = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_INSIDEOUT |
                              OLEMISC_CANTLINKINSIDE | OLEMISC_RECOMPOSEONRESIZE;
static_assert(kMiscStatus == 0x20191);

// The letter of "&Save", as WM_SYSCHAR carries it with and without Shift.
std::array<ACCEL, 2> saveKeys = {{{FALT, L's', IDC_SAVE}, {FALT, L'S', IDC_SAVE}}};

HACCEL SaveKeyTable() {
    static const common::UniqueOf<HACCEL, &DestroyAcceleratorTable> table(
        CreateAcceleratorTable(saveKeys.data(), static_cast<int>(saveKeys.size())));
    return table.get();
}

} // namespace

IMPLEMENT_DYNCREATE(CMXOVDocViewCtrl, COleControl)
IMPLEMENT_OLETYPELIB(CMXOVDocViewCtrl, LIBID_MXOVDocViewLib, kMajorVersion, kMinorVersion)
IMPLEMENT_OLECTLTYPE(CMXOVDocViewCtrl, IDS_USER_TYPE, kMiscStatus)

CMXOVDocViewCtrl::CMXOVDocViewCtrl() {
    InitializeIIDs(&DIID__DMXOVDocView, &DIID__DMXOVDocViewEvents);
    SetInitialSize(kInitialWidth, kInitialHeight);
}

BOOL CMXOVDocViewCtrl::CMXOVDocViewCtrlFactory::UpdateRegistry(BOOL bRegister) {
    if (bRegister) {
        return AfxOleRegisterControlClass(AfxGetInstanceHandle(), m_clsid, m_lpszProgID, IDS_USER_TYPE,
                                          IDB_TOOLBOX, afxRegApartmentThreading, kMiscStatus,
                                          LIBID_MXOVDocViewLib, kMajorVersion, kMinorVersion);
    }
    return AfxOleUnregisterClass(m_clsid, m_lpszProgID);
}

BEGIN_MESSAGE_MAP(CMXOVDocViewCtrl, DialogControl)
    ON_WM_CREATE()
    ON_OLEVERB(IDS_VERB_PROPERTIES, OnProperties)
END_MESSAGE_MAP()

BEGIN_DISPATCH_MAP(CMXOVDocViewCtrl, DialogControl)
    DISP_PROPERTY_NOTIFY_ID(CMXOVDocViewCtrl, "InputParameter", dispidInputParameter, m_inputParameter,
                            OnInputParameterChanged, VT_BSTR)
    DISP_FUNCTION_ID(CMXOVDocViewCtrl, "AboutBox", DISPID_ABOUTBOX, AboutBox, VT_EMPTY, VTS_NONE)
    DISP_FUNCTION_ID(CMXOVDocViewCtrl, "ClearAllData", dispidClearAllData, ClearAllData, VT_EMPTY, VTS_NONE)
    DISP_FUNCTION_ID(CMXOVDocViewCtrl, "OnSizeChange", dispidOnSizeChange, OnSizeChange, VT_EMPTY,
                     VTS_I4 VTS_I4)
    DISP_FUNCTION_ID(CMXOVDocViewCtrl, "LoadFile", dispidLoadFile, LoadFile, VT_EMPTY, VTS_BSTR VTS_BSTR)
    DISP_FUNCTION_ID(CMXOVDocViewCtrl, "Close", dispidClose, Close, VT_EMPTY, VTS_NONE)
END_DISPATCH_MAP()

BEGIN_EVENT_MAP(CMXOVDocViewCtrl, DialogControl)
    EVENT_CUSTOM_ID("ParameterLoaded", eventidParameterLoaded, FireParameterLoaded, VTS_NONE)
END_EVENT_MAP()

BEGIN_PROPPAGEIDS(CMXOVDocViewCtrl, 1)
    PROPPAGEID(CMXOVDocViewPropPage::guid)
END_PROPPAGEIDS(CMXOVDocViewCtrl)

BOOL CMXOVDocViewCtrl::PreCreateWindow(CREATESTRUCT& cs) {
    cs.lpszClass = WC_STATIC;
    return DialogControl::PreCreateWindow(cs);
}

BOOL CMXOVDocViewCtrl::IsSubclassedControl() {
    return TRUE;
}

int CMXOVDocViewCtrl::OnCreate(LPCREATESTRUCT createStruct) {
    if (DialogControl::OnCreate(createStruct) == -1) {
        return -1;
    }
    m_dialog.Create(MXOVDocViewActiveXDlg::IDD, this);
    CoverWith(m_dialog);
    return 0;
}

BOOL CMXOVDocViewCtrl::IsInvokeAllowed(DISPID /*dispid*/) {
    return TRUE;
}

void CMXOVDocViewCtrl::OnDraw(CDC* dc, const CRect& bounds, const CRect& /*invalid*/) {
    if (!dc) {
        return;
    }
    DoSuperclassPaint(dc, bounds);
    m_dialog.MoveWindow(bounds, TRUE);
    CBrush background(TranslateColor(AmbientBackColor()));
    dc->FillRect(bounds, &background);
    RestoreDialog(bounds);
}

void CMXOVDocViewCtrl::DoPropExchange(CPropExchange* px) {
    ExchangeVersion(px, MAKELONG(kMinorVersion, kMajorVersion));
    DialogControl::DoPropExchange(px);
}

void CMXOVDocViewCtrl::OnResetState() {
    DialogControl::OnResetState();
}

void CMXOVDocViewCtrl::OnGetControlInfo(LPCONTROLINFO controlInfo) {
    DialogControl::OnGetControlInfo(controlInfo);
    controlInfo->hAccel = SaveKeyTable();
    controlInfo->cAccel = controlInfo->hAccel ? static_cast<USHORT>(saveKeys.size()) : USHORT{0};
}

void CMXOVDocViewCtrl::OnMnemonic(LPMSG message) {
    const auto isPressed = [message](const ACCEL& key) { return key.key == message->wParam; };
    CWnd* save = m_dialog.GetSafeHwnd() ? m_dialog.GetDlgItem(IDC_SAVE) : nullptr;
    if (save && save->IsWindowEnabled() && std::ranges::any_of(saveKeys, isPressed)) {
        m_dialog.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_SAVE, BN_CLICKED),
                             reinterpret_cast<LPARAM>(save->GetSafeHwnd()));
    }
}

void CMXOVDocViewCtrl::OnInputParameterChanged() {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    const std::wstring folder = m_inputParameter.GetString();
    if (!folder.empty() && docview::PathExists(folder)) {
        m_dialog.SetInformationFile(docview::FindInformationFile(folder));
        m_dialog.SetPackageFolder(folder);
        m_dialog.LoadCatalogue();
    }
    SetModifiedFlag(TRUE);
}

void CMXOVDocViewCtrl::AboutBox() {
    // Hosts that call the stock member get S_OK and no window.
}

void CMXOVDocViewCtrl::ClearAllData() {
    m_dialog.ClearAll();
}

void CMXOVDocViewCtrl::OnSizeChange(LONG cx, LONG cy) {
    m_dialog.SetSize(cx, cy);
}

void CMXOVDocViewCtrl::LoadFile(LPCTSTR bstrExtractedFolderPath, LPCTSTR bstrMXOVPkgFilePath) {
    const std::wstring folder = bstrExtractedFolderPath;
    if (!docview::PathExists(folder)) {
        return;
    }
    m_dialog.SetPackageFolder(folder);
    m_dialog.SetPackageFile(bstrMXOVPkgFilePath);
    m_dialog.SetInformationFile(docview::FindInformationFile(folder));
    m_dialog.LoadCatalogue();
}

void CMXOVDocViewCtrl::Close() {
    m_dialog.SaveOnClose();
}
