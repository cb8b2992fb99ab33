// What a control tells of itself: its property pages, its properties' pages and texts, its type.
#pragma once

#include "ole/OleTarget.h"

class COleControl;

class ControlPagesPart final : public OlePart<ISpecifyPropertyPages> {
public:
    explicit ControlPagesPart(COleControl& control) noexcept;
    STDMETHODIMP GetPages(CAUUID* pages) override;

private:
    COleControl& m_control;
};

class ControlBrowsingPart final : public OlePart<IPerPropertyBrowsing> {
public:
    explicit ControlBrowsingPart(COleControl& control) noexcept;
    STDMETHODIMP GetDisplayString(DISPID id, BSTR* text) override;
    STDMETHODIMP MapPropertyToPage(DISPID id, CLSID* page) override;
    STDMETHODIMP GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) override;
    STDMETHODIMP GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) override;

private:
    COleControl& m_control;
};

class ControlClassInfoPart final : public OlePart<IProvideClassInfo2> {
public:
    explicit ControlClassInfoPart(COleControl& control) noexcept;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

private:
    COleControl& m_control;
};
