// A container's property bag in memory.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <map>
#include <string>
#include <vector>

/// Keeps named values, which it owns; lives on the stack.
class PropertyBag final : public IPropertyBag {
public:
    PropertyBag() = default;
    ~PropertyBag();
    PropertyBag(const PropertyBag&) = delete;
    PropertyBag& operator=(const PropertyBag&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    /// E_INVALIDARG for a name that was not written.
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog* log) override;
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;

    std::map<std::wstring, VARIANT> values;
    std::vector<VARTYPE> asked; ///< the type that each Read wanted
};
