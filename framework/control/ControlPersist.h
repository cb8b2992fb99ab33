// The four persistence interfaces of a control: streams, storages, property bags and memory blocks. All of
// them lead to the control's DoPropExchange.
#pragma once

#include "ole/OleTarget.h"
#include "ole/PropExchange.h"

class COleControl;

/// What the interfaces share.
class ControlPersistence {
public:
    explicit ControlPersistence(COleControl& control) noexcept : m_control(control) {}

    /// Defaults for a control that loads nothing.
    HRESULT InitNew();
    /// Reads everything; when that fails, the control has its defaults and the result is E_FAIL.
    HRESULT Load(CPropExchange& exchange);
    /// Writes everything; E_FAIL when that failed.
    HRESULT Save(CPropExchange& exchange, BOOL clearDirty);
    /// What was saved last is all there is.
    void MarkSaved() noexcept;
    HRESULT IsDirty() const noexcept;
    HRESULT GetClassID(CLSID* clsid) const;
    /// TRUE after a load.
    [[nodiscard]] bool WasLoaded() const noexcept { return m_loaded; }

private:
    COleControl& m_control;
    bool m_loaded = false;
};

class ControlStreamPart final : public OlePart<IPersistStreamInit> {
public:
    explicit ControlStreamPart(COleControl& control) noexcept;

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;

private:
    ControlPersistence& m_persistence;
};

class ControlStoragePart final : public OlePart<IPersistStorage> {
public:
    explicit ControlStoragePart(COleControl& control) noexcept;

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;

private:
    ControlPersistence& m_persistence;
    bool m_saved = false; ///< between Save and SaveCompleted
};

class ControlBagPart final : public OlePart<IPersistPropertyBag> {
public:
    explicit ControlBagPart(COleControl& control) noexcept;

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

private:
    ControlPersistence& m_persistence;
};

class ControlMemoryPart final : public OlePart<IPersistMemory> {
public:
    explicit ControlMemoryPart(COleControl& control) noexcept;

    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(LPVOID memory, ULONG size) override;
    STDMETHODIMP Save(LPVOID memory, BOOL clearDirty, ULONG size) override;
    STDMETHODIMP GetSizeMax(ULONG* size) override;
    STDMETHODIMP InitNew() override;

private:
    ControlPersistence& m_persistence;
};
