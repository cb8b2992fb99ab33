#include "Site.h"

#include "Log.h"

#include <olectl.h>

namespace {

HRESULT Answer(const std::string& call, HRESULT result = S_OK) {
    LogCall(true, call, result);
    return result;
}

std::string Truth(BOOL value) {
    return value ? "(TRUE)" : "(FALSE)";
}

} // namespace

STDMETHODIMP Site::QueryInterface(REFIID iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
        *object = static_cast<IOleClientSite*>(this);
    } else if (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow) {
        *object = static_cast<IOleInPlaceSite*>(this);
    } else if (iid == IID_IOleControlSite && !m_lacks.controlSite) {
        *object = static_cast<IOleControlSite*>(this);
    } else if ((iid == IID_IOleInPlaceFrame || iid == IID_IOleInPlaceUIWindow) && !m_lacks.frame) {
        *object = static_cast<IOleInPlaceFrame*>(this);
    } else if (iid == IID_IDispatch && !m_lacks.ambients) {
        *object = static_cast<IDispatch*>(this);
    }
    return Answer("QueryInterface(" + InterfaceName(iid) + ")", *object ? S_OK : E_NOINTERFACE);
}

STDMETHODIMP Site::SaveObject() {
    return Answer("IOleClientSite::SaveObject");
}

STDMETHODIMP Site::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    *moniker = nullptr;
    return Answer("IOleClientSite::GetMoniker", E_NOTIMPL);
}

STDMETHODIMP Site::GetContainer(IOleContainer** container) {
    *container = nullptr;
    return Answer("IOleClientSite::GetContainer", E_NOINTERFACE);
}

STDMETHODIMP Site::ShowObject() {
    return Answer("IOleClientSite::ShowObject");
}

STDMETHODIMP Site::OnShowWindow(BOOL shown) {
    return Answer("IOleClientSite::OnShowWindow" + Truth(shown));
}

STDMETHODIMP Site::RequestNewObjectLayout() {
    return Answer("IOleClientSite::RequestNewObjectLayout", E_NOTIMPL);
}

STDMETHODIMP Site::GetWindow(HWND* window) {
    *window = m_window;
    return Answer("IOleWindow::GetWindow");
}

STDMETHODIMP Site::ContextSensitiveHelp(BOOL enter) {
    return Answer("IOleWindow::ContextSensitiveHelp" + Truth(enter), E_NOTIMPL);
}

STDMETHODIMP Site::CanInPlaceActivate() {
    return Answer("IOleInPlaceSite::CanInPlaceActivate");
}

STDMETHODIMP Site::OnInPlaceActivate() {
    return Answer("IOleInPlaceSite::OnInPlaceActivate");
}

STDMETHODIMP Site::OnUIActivate() {
    return Answer("IOleInPlaceSite::OnUIActivate");
}

STDMETHODIMP Site::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                    LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    *frame = m_lacks.frame ? nullptr : this;
    *document = nullptr;
    GetClientRect(m_window, position);
    *clip = *position;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_window;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return Answer("IOleInPlaceSite::GetWindowContext: " + RectText(position));
}

STDMETHODIMP Site::Scroll(SIZE) {
    return Answer("IOleInPlaceSite::Scroll", E_NOTIMPL);
}

STDMETHODIMP Site::OnUIDeactivate(BOOL undoable) {
    return Answer("IOleInPlaceSite::OnUIDeactivate" + Truth(undoable));
}

STDMETHODIMP Site::OnInPlaceDeactivate() {
    return Answer("IOleInPlaceSite::OnInPlaceDeactivate");
}

STDMETHODIMP Site::DiscardUndoState() {
    return Answer("IOleInPlaceSite::DiscardUndoState", E_NOTIMPL);
}

STDMETHODIMP Site::DeactivateAndUndo() {
    return Answer("IOleInPlaceSite::DeactivateAndUndo", E_NOTIMPL);
}

STDMETHODIMP Site::OnPosRectChange(LPCRECT position) {
    return Answer("IOleInPlaceSite::OnPosRectChange(" + RectText(position) + ")");
}

STDMETHODIMP Site::OnControlInfoChanged() {
    return Answer("IOleControlSite::OnControlInfoChanged");
}

STDMETHODIMP Site::LockInPlaceActive(BOOL lock) {
    return Answer("IOleControlSite::LockInPlaceActive" + Truth(lock));
}

STDMETHODIMP Site::GetExtendedControl(IDispatch** control) {
    *control = nullptr;
    return Answer("IOleControlSite::GetExtendedControl", E_NOTIMPL);
}

STDMETHODIMP Site::TransformCoords(POINTL*, POINTF*, DWORD) {
    return Answer("IOleControlSite::TransformCoords", E_NOTIMPL);
}

STDMETHODIMP Site::TranslateAccelerator(MSG*, DWORD) {
    return Answer("IOleControlSite::TranslateAccelerator", S_FALSE);
}

STDMETHODIMP Site::OnFocus(BOOL got) {
    return Answer("IOleControlSite::OnFocus" + Truth(got));
}

STDMETHODIMP Site::ShowPropertyFrame() {
    return Answer("IOleControlSite::ShowPropertyFrame", E_NOTIMPL);
}

STDMETHODIMP Site::GetBorder(LPRECT) {
    return Answer("IOleInPlaceUIWindow::GetBorder", INPLACE_E_NOTOOLSPACE);
}

STDMETHODIMP Site::RequestBorderSpace(LPCBORDERWIDTHS) {
    return Answer("IOleInPlaceUIWindow::RequestBorderSpace", INPLACE_E_NOTOOLSPACE);
}

STDMETHODIMP Site::SetBorderSpace(LPCBORDERWIDTHS) {
    return Answer("IOleInPlaceUIWindow::SetBorderSpace");
}

STDMETHODIMP Site::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    if (object) {
        object->AddRef();
    }
    if (m_active) {
        m_active->Release();
    }
    m_active = object;
    return Answer(std::string("IOleInPlaceUIWindow::SetActiveObject") + (object ? "(object)" : "(null)"));
}

STDMETHODIMP Site::InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) {
    return Answer("IOleInPlaceFrame::InsertMenus", E_NOTIMPL);
}

STDMETHODIMP Site::SetMenu(HMENU, HOLEMENU, HWND) {
    return Answer("IOleInPlaceFrame::SetMenu");
}

STDMETHODIMP Site::RemoveMenus(HMENU) {
    return Answer("IOleInPlaceFrame::RemoveMenus", E_NOTIMPL);
}

STDMETHODIMP Site::SetStatusText(LPCOLESTR) {
    return Answer("IOleInPlaceFrame::SetStatusText");
}

STDMETHODIMP Site::EnableModeless(BOOL enable) {
    return Answer("IOleInPlaceFrame::EnableModeless" + Truth(enable));
}

STDMETHODIMP Site::TranslateAccelerator(LPMSG, WORD) {
    return Answer("IOleInPlaceFrame::TranslateAccelerator", S_FALSE);
}

STDMETHODIMP Site::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return Answer("IDispatch::GetTypeInfoCount");
}

STDMETHODIMP Site::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return Answer("IDispatch::GetTypeInfo", DISP_E_BADINDEX);
}

STDMETHODIMP Site::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return Answer("IDispatch::GetIDsOfNames", DISP_E_UNKNOWNNAME);
}

STDMETHODIMP Site::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    const std::string call = "IDispatch::Invoke(ambient " + std::to_string(id) + ")";
    if (!result) {
        return Answer(call, E_POINTER);
    }
    switch (id) {
    case DISPID_AMBIENT_USERMODE:
        result->vt = VT_BOOL;
        result->boolVal = VARIANT_TRUE;
        return Answer(call + ": user mode");
    case DISPID_AMBIENT_BACKCOLOR:
        result->vt = VT_I4;
        result->lVal = static_cast<LONG>(GetSysColor(COLOR_WINDOW));
        return Answer(call + ": back colour");
    case DISPID_AMBIENT_LOCALEID:
        result->vt = VT_I4;
        result->lVal = static_cast<LONG>(GetUserDefaultLCID());
        return Answer(call + ": locale");
    default:
        return Answer(call, DISP_E_MEMBERNOTFOUND);
    }
}
