// IPersistStorage: the state as one stream in a storage. No storage is kept between calls.
#pragma once

#include "Persistence.h"

#include "ole/OleTarget.h"

namespace framework {

class PersistStoragePart final : public OlePart<IPersistStorage> {
public:
    PersistStoragePart(CCmdTarget& object, Persistence& persistence) noexcept
        : OlePart(object), m_persistence(persistence) {}

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;

private:
    Persistence& m_persistence;
    bool m_saved = false;      ///< between Save and SaveCompleted
    bool m_sameAsLoad = false; ///< into the storage that the container keeps
};

} // namespace framework
