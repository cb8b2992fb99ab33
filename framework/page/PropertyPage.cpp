#include "PropertyPage.h"

#include <utility>

IMPLEMENT_DYNAMIC(COlePropertyPage, CDialog)

BEGIN_INTERFACE_MAP(COlePropertyPage, CDialog)
    INTERFACE_PART(COlePropertyPage, IID_IPropertyPage, PropertyPage)
    INTERFACE_PART(COlePropertyPage, IID_IPropertyPage2, PropertyPage)
END_INTERFACE_MAP()

COlePropertyPage::COlePropertyPage(UINT idDlg, UINT idCaption) : m_idDlg(idDlg), m_idCaption(idCaption) {
    EnableAggregation();
    AfxOleLockApp();
}

COlePropertyPage::~COlePropertyPage() {
    AfxOleUnlockApp();
}

void COlePropertyPage::OnFinalRelease() {
    if (m_hWnd) {
        DestroyWindow();
    }
    m_objects.clear();
    m_site.Reset();
    delete this;
}

void COlePropertyPage::SetModifiedFlag(BOOL bModified) {
    m_modified = bModified != FALSE;
    const common::ComPtr<IPropertyPageSite> site = m_site.Copy();
    if (site) {
        site->OnStatusChange(m_modified ? PROPPAGESTATUS_DIRTY : PROPPAGESTATUS_CLEAN);
    }
}

void COlePropertyPage::OnSetPageSite() {}

void COlePropertyPage::OnObjectsChanged() {}

BOOL COlePropertyPage::OnEditProperty(DISPID dispid) {
    static_cast<void>(dispid);
    return FALSE;
}

BOOL COlePropertyPage::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (lParam && HIWORD(wParam) == EN_CHANGE) {
        SetModifiedFlag();
    }
    return CDialog::OnCommand(wParam, lParam);
}

void COlePropertyPage::OnOK() {
    // The frame has the buttons; the page stays until the frame destroys it.
}

void COlePropertyPage::OnCancel() {
    // As for OnOK.
}

void COlePropertyPage::SendPending() {
    for (const Pending& change : std::exchange(m_pending, {})) {
        common::Variant argument;
        (&argument)->vt = VT_BSTR;
        (&argument)->bstrVal = change.value.AllocSysString();
        DISPID name = DISPID_PROPERTYPUT;
        DISPPARAMS params = {&argument, &name, 1, 1};
        for (const common::ComPtr<IDispatch>& object : m_objects) {
            DISPID id = DISPID_UNKNOWN;
            LPOLESTR property = const_cast<LPOLESTR>(change.property.GetString());
            if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &property, 1, LOCALE_USER_DEFAULT, &id))) {
                object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr,
                               nullptr, nullptr);
            }
        }
    }
}

namespace {

/// A property of an object as a text; nothing is changed when it has none.
void ReadText(IDispatch* object, LPCTSTR name, CString& text) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR property = const_cast<LPOLESTR>(name);
    common::Variant value;
    common::Variant shown;
    DISPPARAMS none{};
    if (FAILED(object->GetIDsOfNames(IID_NULL, &property, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr,
                              nullptr)) ||
        FAILED(::VariantChangeType(&shown, &value, 0, VT_BSTR))) {
        return;
    }
    text = CString(shown.Get().bstrVal);
}

} // namespace

void AFXAPI DDP_Text(CDataExchange* pDX, int id, CString& member, LPCTSTR pszPropName) {
    auto* page = static_cast<COlePropertyPage*>(pDX->m_pDlgWnd);
    if (!pDX->m_bSaveAndValidate && !page->m_objects.empty()) {
        ReadText(page->m_objects.front().Get(), pszPropName, member);
    }
    DDX_Text(pDX, id, member);
    if (pDX->m_bSaveAndValidate) {
        page->m_pending.push_back({pszPropName, member});
    }
}

void AFXAPI DDP_PostProcessing(CDataExchange* pDX) {
    if (pDX->m_bSaveAndValidate) {
        static_cast<COlePropertyPage*>(pDX->m_pDlgWnd)->SendPending();
    }
}
