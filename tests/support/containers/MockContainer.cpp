#include "MockContainer.h"

#include <algorithm>
#include <utility>

MockContainer::MockContainer()
    : m_window(CreateWindowExW(0, L"STATIC", L"container", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 50, 50,
                               400, 300, nullptr, nullptr, nullptr, nullptr)) {}

MockContainer::~MockContainer() {
    Remove();
    DestroyWindow(m_window);
}

void MockContainer::Embed(IUnknown* control) {
    control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&m_object));
    m_object->SetClientSite(this);
}

void MockContainer::Remove() {
    if (IOleObject* object = std::exchange(m_object, nullptr)) {
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
        object->Release();
    }
}

HRESULT MockContainer::DoVerb(LONG verb, MSG* message) {
    return m_object->DoVerb(verb, message, this, 0, m_window, &position);
}

bool MockContainer::WasCalled(const std::string& name) const {
    return std::find(m_calls.begin(), m_calls.end(), name) != m_calls.end();
}

HRESULT MockContainer::Note(const char* name, HRESULT result) {
    m_calls.emplace_back(name);
    if (onCall) {
        onCall(name);
    }
    return result;
}

STDMETHODIMP MockContainer::QueryInterface(REFIID iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
        *object = static_cast<IOleClientSite*>(this);
    } else if (iid == IID_IOleInPlaceSite && habits.hasInPlaceSite) {
        *object = static_cast<IOleInPlaceSite*>(this);
    } else if (iid == IID_IOleControlSite && habits.hasControlSite) {
        *object = static_cast<IOleControlSite*>(this);
    } else if (iid == IID_IDispatch && habits.hasAmbients) {
        *object = static_cast<IDispatch*>(this);
    }
    if (!*object) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) MockContainer::AddRef() {
    return static_cast<ULONG>(++m_references);
}

STDMETHODIMP_(ULONG) MockContainer::Release() {
    return static_cast<ULONG>(--m_references);
}

STDMETHODIMP MockContainer::SaveObject() {
    return Note("SaveObject");
}

STDMETHODIMP MockContainer::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    *moniker = nullptr;
    return Note("GetMoniker", E_NOTIMPL);
}

STDMETHODIMP MockContainer::GetContainer(IOleContainer** container) {
    *container = nullptr;
    return Note("GetContainer", E_NOINTERFACE);
}

STDMETHODIMP MockContainer::ShowObject() {
    return Note("ShowObject");
}

STDMETHODIMP MockContainer::OnShowWindow(BOOL) {
    return Note("OnShowWindow");
}

STDMETHODIMP MockContainer::RequestNewObjectLayout() {
    return Note("RequestNewObjectLayout", E_NOTIMPL);
}

STDMETHODIMP MockContainer::GetWindow(HWND* window) {
    *window = habits.knowsWindow ? m_window : nullptr;
    return Note("GetWindow", habits.knowsWindow ? S_OK : E_FAIL);
}

STDMETHODIMP MockContainer::ContextSensitiveHelp(BOOL) {
    return Note("ContextSensitiveHelp", E_NOTIMPL);
}

STDMETHODIMP MockContainer::CanInPlaceActivate() {
    return Note("CanInPlaceActivate", habits.allowsActivation ? S_OK : S_FALSE);
}

STDMETHODIMP MockContainer::OnInPlaceActivate() {
    return Note("OnInPlaceActivate");
}

STDMETHODIMP MockContainer::OnUIActivate() {
    return Note("OnUIActivate", habits.allowsUserInterface ? S_OK : E_FAIL);
}

STDMETHODIMP MockContainer::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                             LPRECT place, LPRECT clipping, LPOLEINPLACEFRAMEINFO info) {
    Note("GetWindowContext");
    if (!habits.knowsContext) {
        // What a failing call leaves behind is no interface.
        *frame = reinterpret_cast<IOleInPlaceFrame*>(0x10);
        return E_FAIL;
    }
    *frame = nullptr;
    *document = nullptr;
    if (habits.hasFrame) {
        *frame = this;
        AddRef();
    }
    *place = position;
    *clipping = clip;
    frameInfoSize = info->cb;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_window;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP MockContainer::Scroll(SIZE) {
    return Note("Scroll", E_NOTIMPL);
}

STDMETHODIMP MockContainer::OnUIDeactivate(BOOL) {
    return Note("OnUIDeactivate");
}

STDMETHODIMP MockContainer::OnInPlaceDeactivate() {
    return Note("OnInPlaceDeactivate");
}

STDMETHODIMP MockContainer::DiscardUndoState() {
    return Note("DiscardUndoState", E_NOTIMPL);
}

STDMETHODIMP MockContainer::DeactivateAndUndo() {
    return Note("DeactivateAndUndo", E_NOTIMPL);
}

STDMETHODIMP MockContainer::OnPosRectChange(LPCRECT place) {
    m_asked = *place;
    return Note("OnPosRectChange");
}

STDMETHODIMP MockContainer::OnControlInfoChanged() {
    return Note("OnControlInfoChanged");
}

STDMETHODIMP MockContainer::LockInPlaceActive(BOOL) {
    return Note("LockInPlaceActive");
}

STDMETHODIMP MockContainer::GetExtendedControl(IDispatch** control) {
    *control = nullptr;
    return Note("GetExtendedControl", E_NOTIMPL);
}

STDMETHODIMP MockContainer::TransformCoords(POINTL*, POINTF*, DWORD) {
    return Note("TransformCoords", E_NOTIMPL);
}

STDMETHODIMP MockContainer::TranslateAccelerator(MSG*, DWORD held) {
    modifiers = held;
    return Note("TranslateAccelerator", S_FALSE);
}

STDMETHODIMP MockContainer::OnFocus(BOOL got) {
    return Note(got ? "OnFocus(1)" : "OnFocus(0)");
}

STDMETHODIMP MockContainer::ShowPropertyFrame() {
    return Note("ShowPropertyFrame", habits.hasPropertyFrame ? S_OK : E_NOTIMPL);
}

STDMETHODIMP MockContainer::GetBorder(LPRECT border) {
    *border = {};
    return Note("GetBorder", INPLACE_E_NOTOOLSPACE);
}

STDMETHODIMP MockContainer::RequestBorderSpace(LPCBORDERWIDTHS) {
    return Note("RequestBorderSpace", INPLACE_E_NOTOOLSPACE);
}

STDMETHODIMP MockContainer::SetBorderSpace(LPCBORDERWIDTHS widths) {
    return Note(widths ? "SetBorderSpace" : "SetBorderSpace(null)");
}

STDMETHODIMP MockContainer::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    m_hasActiveObject = object != nullptr;
    return Note(object ? "SetActiveObject" : "SetActiveObject(null)");
}

STDMETHODIMP MockContainer::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) {
    return Note("InsertMenus", E_NOTIMPL);
}

STDMETHODIMP MockContainer::SetMenu(HMENU, HOLEMENU, HWND) {
    return Note("SetMenu", E_NOTIMPL);
}

STDMETHODIMP MockContainer::RemoveMenus(HMENU) {
    return Note("RemoveMenus", E_NOTIMPL);
}

STDMETHODIMP MockContainer::SetStatusText(LPCOLESTR) {
    return Note("SetStatusText");
}

STDMETHODIMP MockContainer::EnableModeless(BOOL enable) {
    return Note(enable ? "EnableModeless(1)" : "EnableModeless(0)");
}

STDMETHODIMP MockContainer::TranslateAccelerator(LPMSG, WORD) {
    return Note("Frame::TranslateAccelerator", S_FALSE);
}

STDMETHODIMP MockContainer::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                   UINT*) {
    const auto found = ambients.find(id);
    if (found == ambients.end()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    return VariantCopy(result, &found->second);
}
