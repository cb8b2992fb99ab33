#include "Control.h"

#include "common/Himetric.h"
#include "ControlParts.h"
#include "core/ThreadState.h"

using namespace framework;

IMPLEMENT_DYNAMIC(COleControl, CWnd)

/// A line of the interface map: the part of m_parts that answers an interface.
#define CONTROL_PART(iid, part)                                                                              \
    InterfaceEntry{&(iid), [](CCmdTarget& target) -> IUnknown* {                                             \
                       return &static_cast<COleControl&>(target).m_parts->part;                              \
                   }},

BEGIN_INTERFACE_MAP(COleControl, CWnd)
    CONTROL_PART(IID_IOleObject, oleObject)
    CONTROL_PART(IID_IOleControl, oleControl)
    CONTROL_PART(IID_IOleWindow, inPlaceObject)
    CONTROL_PART(IID_IOleInPlaceObject, inPlaceObject)
    CONTROL_PART(IID_IOleInPlaceActiveObject, inPlaceActiveObject)
    CONTROL_PART(IID_IViewObject, viewObject)
    CONTROL_PART(IID_IViewObject2, viewObject)
    CONTROL_PART(IID_IViewObjectEx, viewObject)
    CONTROL_PART(IID_IPersist, persistStreamInit)
    CONTROL_PART(IID_IPersistStreamInit, persistStreamInit)
    CONTROL_PART(IID_IPersistStorage, persistStorage)
    CONTROL_PART(IID_IPersistPropertyBag, persistPropertyBag)
    CONTROL_PART(IID_IPersistMemory, persistMemory)
    CONTROL_PART(IID_IDataObject, dataObject)
    CONTROL_PART(IID_ISpecifyPropertyPages, specifyPropertyPages)
    CONTROL_PART(IID_IProvideClassInfo, provideClassInfo)
    CONTROL_PART(IID_IProvideClassInfo2, provideClassInfo)
    CONTROL_PART(IID_IQuickActivate, quickActivate)
    CONTROL_PART(IID_IConnectionPointContainer, connectionPointContainer)
END_INTERFACE_MAP()

#undef CONTROL_PART

COleControl::COleControl() : m_parts(std::make_unique<ControlParts>(*this)) {
    constexpr int kWidth = 100;
    constexpr int kHeight = 50;
    SetInitialSize(kWidth, kHeight);
    EnableAutomation();
    EnableAggregation();
    AfxOleLockApp();
}

COleControl::~COleControl() {
    AfxOleUnlockApp();
}

void COleControl::InitializeIIDs(const IID* piidPrimary, const IID* piidEvents) {
    m_parts->primary = piidPrimary;
    m_parts->events.SetInterface(*piidEvents);
    EnableTypeLib();
}

void COleControl::SetInitialSize(int cx, int cy) {
    m_parts->initialExtent = m_parts->extent = common::PixelsToHimetric({cx, cy});
}

BOOL COleControl::GetDispatchIID(IID* pIID) {
    if (m_parts->primary) {
        *pIID = *m_parts->primary;
    }
    return m_parts->primary != nullptr;
}

BOOL COleControl::IsInvokeAllowed(DISPID dispid) {
    static_cast<void>(dispid);
    return m_parts->persistence.IsInitialised();
}

const CLSID* COleControl::GetPropPageIDs(ULONG& cPropPages) {
    cPropPages = 0;
    return nullptr;
}

void COleControl::OnFinalRelease() {
    m_parts->activation.Deactivate();
    if (m_hWnd) {
        DestroyWindow();
    }
    m_parts->Clear();
    ThreadState* thread = ModuleState::Thread();
    if (thread && thread->message.hwnd) {
        thread->condemned.emplace_back(this); // a handler of the control's own windows may be on the stack
    } else {
        delete this;
    }
}

BOOL COleControl::IsModified() const noexcept {
    return m_parts->persistence.IsModified();
}

void COleControl::SetModifiedFlag(BOOL bModified) {
    m_parts->persistence.SetModified(bModified != FALSE);
}

void COleControl::DoPropExchange(CPropExchange* pPX) {
    ExchangeExtent(pPX);
}

BOOL COleControl::ExchangeVersion(CPropExchange* pPX, DWORD dwVersionDefault, BOOL bConvert) {
    DWORD loaded = 0;
    return pPX->ExchangeVersion(loaded, dwVersionDefault, bConvert);
}

BOOL COleControl::ExchangeExtent(CPropExchange* pPX) {
    SIZE extent = m_parts->extent;
    const BOOL done = PX_Long(pPX, L"_ExtentX", extent.cx, m_parts->initialExtent.cx) &&
                      PX_Long(pPX, L"_ExtentY", extent.cy, m_parts->initialExtent.cy);
    if (done && pPX->IsLoading() && extent.cx >= 0 && extent.cy >= 0) {
        m_parts->extent = extent;
    }
    return done;
}

void COleControl::OnResetState() {
    OleResetExchange reset;
    DoPropExchange(&reset);
    InvalidateControl();
}

LPOLECLIENTSITE COleControl::GetClientSite() noexcept {
    return m_parts->site.Client();
}

void COleControl::OnSetClientSite() {}

BOOL COleControl::OnSetExtent(LPSIZEL lpSizeL) {
    if (lpSizeL->cx != m_parts->extent.cx || lpSizeL->cy != m_parts->extent.cy) {
        SetModifiedFlag(); // the size is part of the state
    }
    m_parts->extent = *lpSizeL;
    m_parts->activation.AskForSize(common::HimetricToPixels(m_parts->extent));
    m_parts->viewObject.NotifyChange();
    return TRUE;
}

void COleControl::OnClose(DWORD dwSaveOption) {
    const common::ComPtr<IOleClientSite> site(GetClientSite());
    if (site && IsModified() &&
        (dwSaveOption == OLECLOSE_SAVEIFDIRTY || dwSaveOption == OLECLOSE_PROMPTSAVE)) {
        site->SaveObject();
    }
    m_parts->activation.Deactivate();
    const common::ComPtr<IOleAdviseHolder> holder = m_parts->oleObject.Holder();
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
    static_cast<void>(pControlInfo);
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
    *lpsizel = m_parts->extent;
    return TRUE;
}

BOOL COleControl::OnGetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) {
    return FALSE;
}

BOOL COleControl::OnGetColorSet(DVTARGETDEVICE*, HDC, LPLOGPALETTE*) {
    return FALSE;
}
