// The state that an object saves and loads, whatever interface it is saved through.
#pragma once

#include "PropExchange.h"

namespace framework {

/// What persistence needs of the object itself.
struct PersistentObject {
    virtual HRESULT GetClassID(CLSID* clsid) = 0;
    /// Loads, saves or resets every persistent property, by the kind of exchange.
    virtual void Exchange(CPropExchange& exchange) = 0;
    /// Sets every persistent property to its default.
    virtual void Reset() = 0;
    /// The properties have changed and the object looks different.
    virtual void Redraw() = 0;
    /// The container has saved the object where it keeps it.
    virtual void ReportSaved() = 0;

protected:
    ~PersistentObject() = default;
};

/// What the persistence interfaces of one object share.
class Persistence {
public:
    explicit Persistence(PersistentObject& object) noexcept : m_object(object) {}

    /// Sets the defaults, for an object that loads nothing.
    HRESULT InitNew();
    /// Reads everything. When that fails, the object has its defaults and the result is E_FAIL.
    HRESULT Load(PropExchange& exchange);
    /// Writes everything; E_FAIL when that failed.
    HRESULT Save(PropExchange& exchange, BOOL clearDirty);
    /// The container keeps what was saved last: no changes are left, and it is reported.
    void Commit();
    HRESULT IsDirty() const noexcept;
    HRESULT GetClassID(CLSID* clsid) const;

    /// There are changes that the container has not saved.
    [[nodiscard]] bool IsModified() const noexcept { return m_modified; }
    void SetModified(bool modified) noexcept { m_modified = modified; }
    /// After a load that succeeded.
    [[nodiscard]] bool WasLoaded() const noexcept { return m_loaded; }
    /// After a load or InitNew.
    [[nodiscard]] bool IsInitialised() const noexcept { return m_initialised; }

private:
    PersistentObject& m_object;
    bool m_modified = false;
    bool m_loaded = false;
    bool m_initialised = false;
};

} // namespace framework
