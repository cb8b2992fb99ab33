#include "Control.h"

#include "ControlUnits.h"
#include "core/ThreadState.h"

IMPLEMENT_DYNAMIC(COleControl, CWnd)

BEGIN_INTERFACE_MAP(COleControl, CWnd)
    INTERFACE_PART(COleControl, IID_IOleObject, OleObject)
    INTERFACE_PART(COleControl, IID_IOleControl, OleControl)
    INTERFACE_PART(COleControl, IID_IOleWindow, OleInPlaceObject)
    INTERFACE_PART(COleControl, IID_IOleInPlaceObject, OleInPlaceObject)
    INTERFACE_PART(COleControl, IID_IOleInPlaceActiveObject, OleInPlaceActiveObject)
    INTERFACE_PART(COleControl, IID_IViewObject, ViewObject)
    INTERFACE_PART(COleControl, IID_IViewObject2, ViewObject)
    INTERFACE_PART(COleControl, IID_IViewObjectEx, ViewObject)
    INTERFACE_PART(COleControl, IID_IPersist, PersistStreamInit)
    INTERFACE_PART(COleControl, IID_IPersistStreamInit, PersistStreamInit)
    INTERFACE_PART(COleControl, IID_IPersistStorage, PersistStorage)
    INTERFACE_PART(COleControl, IID_IPersistPropertyBag, PersistPropertyBag)
    INTERFACE_PART(COleControl, IID_IPersistMemory, PersistMemory)
    INTERFACE_PART(COleControl, IID_IDataObject, DataObject)
    INTERFACE_PART(COleControl, IID_IOleCache, OleCache)
    INTERFACE_PART(COleControl, IID_ISpecifyPropertyPages, SpecifyPropertyPages)
    INTERFACE_PART(COleControl, IID_IPerPropertyBrowsing, PerPropertyBrowsing)
    INTERFACE_PART(COleControl, IID_IProvideClassInfo, ProvideClassInfo)
    INTERFACE_PART(COleControl, IID_IProvideClassInfo2, ProvideClassInfo)
    INTERFACE_PART(COleControl, IID_IQuickActivate, QuickActivate)
    INTERFACE_PART(COleControl, IID_IConnectionPointContainer, ConnectionPointContainer)
END_INTERFACE_MAP()

COleControl::COleControl() {
    constexpr int kWidth = 100;
    constexpr int kHeight = 50;
    SetInitialSize(kWidth, kHeight);
    EnableAutomation();
    EnableAggregation();
    m_xConnectionPointContainer.Add(m_eventPoint);
    m_xConnectionPointContainer.Add(m_notifyPoint);
    AfxOleLockApp();
}

COleControl::~COleControl() {
    AfxOleUnlockApp();
}

void COleControl::InitializeIIDs(const IID* piidPrimary, const IID* piidEvents) {
    m_primaryIID = piidPrimary;
    m_eventPoint.SetInterface(*piidEvents);
    EnableTypeLib();
}

void COleControl::SetInitialSize(int cx, int cy) {
    m_initial = m_extent = OleToHimetric({cx, cy});
}

BOOL COleControl::GetDispatchIID(IID* pIID) {
    if (m_primaryIID) {
        *pIID = *m_primaryIID;
    }
    return m_primaryIID != nullptr;
}

BOOL COleControl::IsInvokeAllowed(DISPID dispid) {
    static_cast<void>(dispid);
    return m_initialised;
}

const CLSID* COleControl::GetPropPageIDs(ULONG& cPropPages) {
    cPropPages = 0;
    return nullptr;
}

void COleControl::OnFinalRelease() {
    m_activation.Deactivate();
    if (m_hWnd) {
        DestroyWindow();
    }
    m_site.Set(nullptr);
    m_xViewObject.Clear();
    m_xDataObject.Clear();
    m_xOleCache.Clear();
    m_eventPoint.Clear();
    m_notifyPoint.Clear();
    AFX_THREAD_STATE* thread = AFX_MODULE_STATE::Thread();
    if (thread && thread->message.hwnd) {
        thread->condemned.emplace_back(this); // a handler of the control's own windows may be on the stack
    } else {
        delete this;
    }
}

void COleControl::SetModifiedFlag(BOOL bModified) {
    m_modified = bModified != FALSE;
}

void COleControl::DoPropExchange(CPropExchange* pPX) {
    ExchangeExtent(pPX);
}

BOOL COleControl::ExchangeVersion(CPropExchange* pPX, DWORD dwVersionDefault, BOOL bConvert) {
    DWORD loaded = 0;
    return pPX->ExchangeVersion(loaded, dwVersionDefault, bConvert);
}

BOOL COleControl::ExchangeExtent(CPropExchange* pPX) {
    SIZE extent = m_extent;
    const BOOL done = PX_Long(pPX, L"_ExtentX", extent.cx, m_initial.cx) &&
                      PX_Long(pPX, L"_ExtentY", extent.cy, m_initial.cy);
    if (done && pPX->IsLoading() && extent.cx >= 0 && extent.cy >= 0) {
        m_extent = extent;
    }
    return done;
}

void COleControl::OnResetState() {
    OleResetExchange reset;
    DoPropExchange(&reset);
    InvalidateControl();
}

void COleControl::SetClientSite(IOleClientSite* site) {
    if (site != m_site.Client()) {
        m_activation.Deactivate(); // its window and frame belong to the old container
    }
    m_site.Set(site);
    OnSetClientSite();
}

void COleControl::OnSetClientSite() {}

void COleControl::GetControlSize(int* pcx, int* pcy) {
    SIZE size = OleToPixels(m_extent);
    if (m_hWnd) {
        CRect area;
        GetClientRect(area);
        size = area.Size();
    }
    *pcx = size.cx;
    *pcy = size.cy;
}

BOOL COleControl::OnSetExtent(LPSIZEL lpSizeL) {
    m_extent = *lpSizeL;
    m_activation.AskForSize(OleToPixels(m_extent));
    m_xViewObject.NotifyChange();
    return TRUE;
}

void COleControl::OnClose(DWORD dwSaveOption) {
    const OlePtr<IOleClientSite> site(GetClientSite());
    if (site && m_modified && (dwSaveOption == OLECLOSE_SAVEIFDIRTY || dwSaveOption == OLECLOSE_PROMPTSAVE)) {
        site->SaveObject();
    }
    m_activation.Deactivate();
    const OlePtr<IOleAdviseHolder> holder = m_xOleObject.Holder();
    if (holder) {
        holder->SendOnClose();
    }
}

BOOL COleControl::OnDoVerb(LONG iVerb, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    return DoOleVerb(iVerb, lpMsg, hWndParent, lpRect);
}

BOOL COleControl::OnEnumVerbs(LPENUMOLEVERB* ppenumOleVerb) {
    return EnumOleVerbs(ppenumOleVerb);
}

void COleControl::OnGetControlInfo(LPCONTROLINFO pControlInfo) {
    pControlInfo->hAccel = nullptr;
    pControlInfo->cAccel = 0;
    pControlInfo->dwFlags = 0;
}

void COleControl::OnMnemonic(LPMSG pMsg) {
    static_cast<void>(pMsg);
}

void COleControl::OnFreezeEvents(BOOL bFreeze) {
    static_cast<void>(bFreeze);
}

DWORD COleControl::OnGetViewStatus() {
    return VIEWSTATUS_OPAQUE;
}

BOOL COleControl::OnGetViewExtent(DWORD dwDrawAspect, LONG, DVTARGETDEVICE*, LPSIZEL lpsizel) {
    if (dwDrawAspect != DVASPECT_CONTENT && dwDrawAspect != DVASPECT_OPAQUE) {
        return FALSE;
    }
    *lpsizel = m_extent;
    return TRUE;
}

BOOL COleControl::OnGetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) {
    return FALSE;
}

BOOL COleControl::OnGetColorSet(DVTARGETDEVICE*, HDC, LPLOGPALETTE*) {
    return FALSE;
}

BOOL COleControl::OnMapPropertyToPage(DISPID, LPCLSID, BOOL*) {
    return FALSE;
}

BOOL COleControl::OnGetDisplayString(DISPID, CString&) {
    return FALSE;
}
