// IPersistPropertyBag: the state as named values.
#pragma once

#include "Persistence.h"

#include "ole/OleTarget.h"

namespace framework {

class PersistPropertyBagPart final : public OlePart<IPersistPropertyBag> {
public:
    PersistPropertyBagPart(CCmdTarget& object, Persistence& persistence) noexcept
        : OlePart(object), m_persistence(persistence) {}

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

private:
    Persistence& m_persistence;
};

} // namespace framework
