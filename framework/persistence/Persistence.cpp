#include "Persistence.h"

namespace framework {

HRESULT Persistence::InitNew() {
    m_object.Reset();
    m_initialised = true;
    m_modified = false;
    return S_OK;
}

HRESULT Persistence::Load(PropExchange& exchange) {
    m_object.Exchange(exchange);
    const bool failed = exchange.HasFailed();
    if (failed) {
        m_object.Reset();
    }
    m_loaded = !failed;
    m_initialised = true;
    m_modified = false;
    m_object.Redraw();
    return failed ? E_FAIL : S_OK;
}

HRESULT Persistence::Save(PropExchange& exchange, BOOL clearDirty) {
    m_object.Exchange(exchange);
    if (exchange.HasFailed()) {
        return E_FAIL;
    }
    if (clearDirty) {
        m_modified = false;
    }
    return S_OK;
}

void Persistence::Commit() {
    m_modified = false;
    m_object.ReportSaved();
}

HRESULT Persistence::IsDirty() const noexcept {
    return m_modified ? S_OK : S_FALSE;
}

HRESULT Persistence::GetClassID(CLSID* clsid) const {
    return clsid ? m_object.GetClassID(clsid) : E_POINTER;
}

} // namespace framework
