// The interfaces that describe a control: its property pages, the texts of its properties, its type.
#pragma once

#include "ControlPart.h"

class SpecifyPropertyPagesPart final : public ControlPart<ISpecifyPropertyPages> {
public:
    using ControlPart::ControlPart;
    STDMETHODIMP GetPages(CAUUID* pages) override;
};

class PerPropertyBrowsingPart final : public ControlPart<IPerPropertyBrowsing> {
public:
    using ControlPart::ControlPart;
    STDMETHODIMP GetDisplayString(DISPID id, BSTR* text) override;
    STDMETHODIMP MapPropertyToPage(DISPID id, CLSID* page) override;
    STDMETHODIMP GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) override;
    STDMETHODIMP GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) override;
};

class ProvideClassInfoPart final : public ControlPart<IProvideClassInfo2> {
public:
    using ControlPart::ControlPart;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;
};
