#include "ControlPersist.h"

#include "Control.h"

namespace {

constexpr wchar_t kStreamName[] = L"Contents";

/// A growing stream in memory; null when memory is out.
OlePtr<IStream> MemoryStream() {
    OlePtr<IStream> stream;
    ::CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive());
    return stream;
}

/// Bytes that a stream holds.
ULONG SizeOf(IStream& stream) {
    STATSTG status{};
    return SUCCEEDED(stream.Stat(&status, STATFLAG_NONAME)) ? status.cbSize.LowPart : 0;
}

/// The state as bytes; null when it cannot be had.
OlePtr<IStream> SavedState(ControlPersistence& persistence) {
    OlePtr<IStream> stream = MemoryStream();
    if (stream) {
        OleStreamExchange exchange(*stream.Get(), FALSE);
        if (FAILED(persistence.Save(exchange, FALSE))) {
            stream.Reset();
        }
    }
    return stream;
}

} // namespace

HRESULT ControlPersistence::InitNew() {
    m_control.OnResetState();
    m_control.m_initialised = true;
    m_control.m_modified = false;
    return S_OK;
}

HRESULT ControlPersistence::Load(CPropExchange& exchange) {
    m_control.DoPropExchange(&exchange);
    const bool failed = exchange.HasFailed();
    if (failed) {
        m_control.OnResetState();
    }
    m_loaded = true;
    m_control.m_initialised = true;
    m_control.m_modified = false;
    m_control.InvalidateControl();
    return failed ? E_FAIL : S_OK;
}

HRESULT ControlPersistence::Save(CPropExchange& exchange, BOOL clearDirty) {
    m_control.DoPropExchange(&exchange);
    if (exchange.HasFailed()) {
        return E_FAIL;
    }
    if (clearDirty) {
        MarkSaved();
    }
    return S_OK;
}

void ControlPersistence::MarkSaved() noexcept {
    m_control.m_modified = false;
}

HRESULT ControlPersistence::IsDirty() const noexcept {
    return m_control.IsModified() ? S_OK : S_FALSE;
}

HRESULT ControlPersistence::GetClassID(CLSID* clsid) const {
    return clsid ? m_control.GetClassID(clsid) : E_POINTER;
}

ControlStreamPart::ControlStreamPart(COleControl& control) noexcept
    : OlePart(control), m_persistence(control.m_persistence) {}

STDMETHODIMP ControlStreamPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP ControlStreamPart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP ControlStreamPart::Load(IStream* stream) {
    return Guard([&]() -> HRESULT {
        if (!stream) {
            return E_POINTER;
        }
        OleStreamExchange exchange(*stream, TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP ControlStreamPart::Save(IStream* stream, BOOL clearDirty) {
    return Guard([&]() -> HRESULT {
        if (!stream) {
            return E_POINTER;
        }
        OleStreamExchange exchange(*stream, FALSE);
        return m_persistence.Save(exchange, clearDirty);
    });
}

STDMETHODIMP ControlStreamPart::GetSizeMax(ULARGE_INTEGER* size) {
    return Guard([&]() -> HRESULT {
        if (!size) {
            return E_POINTER;
        }
        const OlePtr<IStream> state = SavedState(m_persistence);
        size->QuadPart = state ? SizeOf(*state.Get()) : 0;
        return state ? S_OK : E_FAIL;
    });
}

STDMETHODIMP ControlStreamPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}

ControlStoragePart::ControlStoragePart(COleControl& control) noexcept
    : OlePart(control), m_persistence(control.m_persistence) {}

STDMETHODIMP ControlStoragePart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP ControlStoragePart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP ControlStoragePart::InitNew(IStorage* storage) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        return m_persistence.WasLoaded() ? CO_E_ALREADYINITIALIZED : m_persistence.InitNew();
    });
}

STDMETHODIMP ControlStoragePart::Load(IStorage* storage) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        if (m_persistence.WasLoaded()) {
            return CO_E_ALREADYINITIALIZED;
        }
        OlePtr<IStream> stream;
        const HRESULT opened =
            storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Receive());
        if (FAILED(opened)) {
            return opened;
        }
        OleStreamExchange exchange(*stream.Get(), TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP ControlStoragePart::Save(IStorage* storage, BOOL) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        CLSID clsid{};
        m_persistence.GetClassID(&clsid);
        ::WriteClassStg(storage, clsid);
        OlePtr<IStream> stream;
        const HRESULT created = storage->CreateStream(
            kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.Receive());
        if (FAILED(created)) {
            return created;
        }
        OleStreamExchange exchange(*stream.Get(), FALSE);
        const HRESULT saved = m_persistence.Save(exchange, FALSE);
        m_saved = SUCCEEDED(saved);
        return saved;
    });
}

STDMETHODIMP ControlStoragePart::SaveCompleted(IStorage*) {
    return Guard([&]() -> HRESULT {
        if (m_saved) { // no storage is kept, so the new one does not matter
            m_saved = false;
            m_persistence.MarkSaved();
        }
        return S_OK;
    });
}

STDMETHODIMP ControlStoragePart::HandsOffStorage() {
    return S_OK; // no storage is kept
}

ControlBagPart::ControlBagPart(COleControl& control) noexcept
    : OlePart(control), m_persistence(control.m_persistence) {}

STDMETHODIMP ControlBagPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP ControlBagPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}

STDMETHODIMP ControlBagPart::Load(IPropertyBag* bag, IErrorLog* log) {
    return Guard([&]() -> HRESULT {
        if (!bag) {
            return E_POINTER;
        }
        OleBagExchange exchange(*bag, log, TRUE, true);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP ControlBagPart::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    return Guard([&]() -> HRESULT {
        if (!bag) {
            return E_POINTER;
        }
        OleBagExchange exchange(*bag, nullptr, FALSE, saveAll != FALSE);
        return m_persistence.Save(exchange, clearDirty);
    });
}

ControlMemoryPart::ControlMemoryPart(COleControl& control) noexcept
    : OlePart(control), m_persistence(control.m_persistence) {}

STDMETHODIMP ControlMemoryPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP ControlMemoryPart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP ControlMemoryPart::Load(LPVOID memory, ULONG size) {
    return Guard([&]() -> HRESULT {
        if (!memory) {
            return E_POINTER;
        }
        const OlePtr<IStream> stream = MemoryStream();
        if (!stream || FAILED(stream->Write(memory, size, nullptr)) ||
            FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr))) {
            return E_OUTOFMEMORY;
        }
        OleStreamExchange exchange(*stream.Get(), TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP ControlMemoryPart::Save(LPVOID memory, BOOL clearDirty, ULONG size) {
    return Guard([&]() -> HRESULT {
        if (!memory) {
            return E_POINTER;
        }
        const OlePtr<IStream> state = SavedState(m_persistence);
        if (!state || FAILED(state->Seek({}, STREAM_SEEK_SET, nullptr))) {
            return E_FAIL;
        }
        const ULONG needed = SizeOf(*state.Get());
        if (size < needed) {
            return STG_E_MEDIUMFULL;
        }
        const HRESULT read = state->Read(memory, needed, nullptr);
        if (SUCCEEDED(read) && clearDirty) {
            m_persistence.MarkSaved();
        }
        return read;
    });
}

STDMETHODIMP ControlMemoryPart::GetSizeMax(ULONG* size) {
    return Guard([&]() -> HRESULT {
        if (!size) {
            return E_POINTER;
        }
        const OlePtr<IStream> state = SavedState(m_persistence);
        *size = state ? SizeOf(*state.Get()) : 0;
        return state ? S_OK : E_FAIL;
    });
}

STDMETHODIMP ControlMemoryPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}
