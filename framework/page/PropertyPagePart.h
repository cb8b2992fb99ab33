// IPropertyPage and IPropertyPage2 of a property page.
#pragma once

#include "ole/OleTarget.h"

class COlePropertyPage;

namespace framework {

class PropertyPagePart final : public OlePart<IPropertyPage2> {
public:
    explicit PropertyPagePart(COlePropertyPage& page) noexcept;

    STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
    STDMETHODIMP Activate(HWND parent, LPCRECT rect, BOOL modal) override;
    STDMETHODIMP Deactivate() override;
    STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
    STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
    STDMETHODIMP Show(UINT command) override;
    STDMETHODIMP Move(LPCRECT rect) override;
    STDMETHODIMP IsPageDirty() override;
    STDMETHODIMP Apply() override;
    STDMETHODIMP Help(LPCOLESTR folder) override;
    STDMETHODIMP TranslateAccelerator(MSG* message) override;
    STDMETHODIMP EditProperty(DISPID id) override;

private:
    COlePropertyPage& m_page;
};

} // namespace framework
