#include "PropertyBag.h"

PropertyBag::~PropertyBag() {
    for (auto& [name, value] : values) {
        VariantClear(&value);
    }
}

STDMETHODIMP PropertyBag::QueryInterface(REFIID /*iid*/, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP PropertyBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog* /*log*/) {
    asked.push_back(value->vt);
    const auto found = values.find(name);
    return found == values.end() ? E_INVALIDARG : VariantCopy(value, &found->second);
}

STDMETHODIMP PropertyBag::Write(LPCOLESTR name, VARIANT* value) {
    return VariantCopy(&values[name], value);
}
