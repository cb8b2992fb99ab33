#include "PersistPropertyBag.h"

namespace framework {

STDMETHODIMP PersistPropertyBagPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP PersistPropertyBagPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}

STDMETHODIMP PersistPropertyBagPart::Load(IPropertyBag* bag, IErrorLog* log) {
    return Guard([&]() -> HRESULT {
        if (!bag) {
            return E_POINTER;
        }
        OleBagExchange exchange(*bag, log, TRUE, true);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP PersistPropertyBagPart::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    return Guard([&]() -> HRESULT {
        if (!bag) {
            return E_POINTER;
        }
        OleBagExchange exchange(*bag, nullptr, FALSE, saveAll != FALSE);
        return m_persistence.Save(exchange, clearDirty);
    });
}

} // namespace framework
