// IPersistStreamInit and IPersistMemory: the state as one block of bytes.
#pragma once

#include "Persistence.h"

#include "ole/OleTarget.h"

namespace framework {

class PersistStreamInitPart final : public OlePart<IPersistStreamInit> {
public:
    PersistStreamInitPart(CCmdTarget& object, Persistence& persistence) noexcept
        : OlePart(object), m_persistence(persistence) {}

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;

private:
    Persistence& m_persistence;
};

class PersistMemoryPart final : public OlePart<IPersistMemory> {
public:
    PersistMemoryPart(CCmdTarget& object, Persistence& persistence) noexcept
        : OlePart(object), m_persistence(persistence) {}

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(LPVOID memory, ULONG size) override;
    STDMETHODIMP Save(LPVOID memory, BOOL clearDirty, ULONG size) override;
    STDMETHODIMP GetSizeMax(ULONG* size) override;
    STDMETHODIMP InitNew() override;

private:
    Persistence& m_persistence;
};

} // namespace framework
