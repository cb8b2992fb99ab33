// COleControl: colours, ambient properties and dialogs of the container.
#include "Control.h"
#include "ControlParts.h"

namespace {

constexpr OLE_COLOR kWindowColour = 0x80000000U | COLOR_WINDOW;

} // namespace

COLORREF COleControl::TranslateColor(OLE_COLOR clrColor, HPALETTE hpal) {
    COLORREF colour = 0;
    ::OleTranslateColor(clrColor, hpal, &colour);
    return colour;
}

BOOL COleControl::GetAmbientProperty(DISPID dwDispid, VARTYPE vtProp, void* pvProp) {
    common::Variant value;
    if (!m_parts->site.Ambient(dwDispid, vtProp, value)) {
        return FALSE;
    }
    switch (vtProp) {
    case VT_BOOL:
        *static_cast<BOOL*>(pvProp) = value.Get().boolVal != VARIANT_FALSE;
        return TRUE;
    case VT_I4:
        *static_cast<long*>(pvProp) = value.Get().lVal;
        return TRUE;
    case VT_BSTR:
        *static_cast<CString*>(pvProp) = CString(value.Get().bstrVal);
        return TRUE;
    default:
        return FALSE;
    }
}

OLE_COLOR COleControl::AmbientBackColor() {
    common::Variant value;
    COLORREF usable = 0;
    // Containers return colours signed and unsigned, and some return values that are no colour.
    long colour = 0;
    if (m_parts->site.Ambient(DISPID_AMBIENT_BACKCOLOR, VT_UI4, value)) {
        colour = static_cast<long>(value.Get().ulVal);
    } else if (!GetAmbientProperty(DISPID_AMBIENT_BACKCOLOR, VT_I4, &colour)) {
        return kWindowColour;
    }
    const auto given = static_cast<OLE_COLOR>(colour);
    return SUCCEEDED(::OleTranslateColor(given, nullptr, &usable)) ? given : kWindowColour;
}

CString COleControl::AmbientDisplayName() {
    CString name;
    GetAmbientProperty(DISPID_AMBIENT_DISPLAYNAME, VT_BSTR, &name);
    return name;
}

LCID COleControl::AmbientLocaleID() {
    long locale = 0;
    GetAmbientProperty(DISPID_AMBIENT_LOCALEID, VT_I4, &locale);
    return static_cast<LCID>(locale);
}

void COleControl::OnAmbientPropertyChange(DISPID dispID) {
    if (dispID == DISPID_AMBIENT_BACKCOLOR || dispID == DISPID_UNKNOWN) {
        InvalidateControl();
    }
}

void COleControl::PreModalDialog(HWND hWndParent) {
    static_cast<void>(hWndParent);
    m_parts->activation.EnterModal();
}

void COleControl::PostModalDialog(HWND hWndParent) {
    static_cast<void>(hWndParent);
    m_parts->activation.LeaveModal();
}

BOOL COleControl::OnProperties(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect) {
    static_cast<void>(lpMsg);
    const common::ComPtr<IOleControlSite> site(m_parts->site.Control());
    if (site && site->ShowPropertyFrame() == S_OK) {
        return TRUE;
    }
    ULONG count = 0;
    const CLSID* pages = GetPropPageIDs(count);
    if (count == 0) {
        return FALSE;
    }
    CString caption = AmbientDisplayName();
    if (caption.IsEmpty()) {
        caption.LoadString(GetUserTypeNameID());
    }
    POINT place = {0, 0};
    if (lpRect) {
        place = {lpRect->left, lpRect->top};
    }
    IUnknown* object = GetIDispatch(FALSE);
    PreModalDialog(hWndParent);
    const HRESULT shown = ::OleCreatePropertyFrame(
        hWndParent ? hWndParent : m_hWnd, static_cast<UINT>(place.x), static_cast<UINT>(place.y), caption, 1,
        &object, count, const_cast<CLSID*>(pages), AmbientLocaleID(), 0, nullptr);
    PostModalDialog(hWndParent);
    return SUCCEEDED(shown);
}
