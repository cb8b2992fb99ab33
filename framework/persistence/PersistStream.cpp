#include "PersistStream.h"

namespace framework {

namespace {

/// A growing stream in memory; null when memory is out.
common::ComPtr<IStream> MemoryStream() {
    common::ComPtr<IStream> stream;
    ::CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive());
    return stream;
}

/// Bytes that a stream holds.
ULONG SizeOf(IStream& stream) {
    STATSTG status{};
    return SUCCEEDED(stream.Stat(&status, STATFLAG_NONAME)) ? status.cbSize.LowPart : 0;
}

/// The state as bytes; null when it cannot be had.
common::ComPtr<IStream> SavedState(Persistence& persistence) {
    common::ComPtr<IStream> stream = MemoryStream();
    if (stream) {
        OleStreamExchange exchange(*stream.Get(), FALSE);
        if (FAILED(persistence.Save(exchange, FALSE))) {
            stream.Reset();
        }
    }
    return stream;
}

} // namespace

STDMETHODIMP PersistStreamInitPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP PersistStreamInitPart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP PersistStreamInitPart::Load(IStream* stream) {
    return Guard([&]() -> HRESULT {
        if (!stream) {
            return E_POINTER;
        }
        OleStreamExchange exchange(*stream, TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP PersistStreamInitPart::Save(IStream* stream, BOOL clearDirty) {
    return Guard([&]() -> HRESULT {
        if (!stream) {
            return E_POINTER;
        }
        OleStreamExchange exchange(*stream, FALSE);
        return m_persistence.Save(exchange, clearDirty);
    });
}

STDMETHODIMP PersistStreamInitPart::GetSizeMax(ULARGE_INTEGER* size) {
    return Guard(size, [&]() -> HRESULT {
        const common::ComPtr<IStream> state = SavedState(m_persistence);
        size->QuadPart = state ? SizeOf(*state.Get()) : 0;
        return state ? S_OK : E_FAIL;
    });
}

STDMETHODIMP PersistStreamInitPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}

STDMETHODIMP PersistMemoryPart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP PersistMemoryPart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP PersistMemoryPart::Load(LPVOID memory, ULONG size) {
    return Guard([&]() -> HRESULT {
        if (!memory) {
            return E_POINTER;
        }
        const common::ComPtr<IStream> stream = MemoryStream();
        if (!stream || FAILED(stream->Write(memory, size, nullptr)) ||
            FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr))) {
            return E_OUTOFMEMORY;
        }
        OleStreamExchange exchange(*stream.Get(), TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP PersistMemoryPart::Save(LPVOID memory, BOOL clearDirty, ULONG size) {
    return Guard([&]() -> HRESULT {
        if (!memory) {
            return E_POINTER;
        }
        const common::ComPtr<IStream> state = SavedState(m_persistence);
        if (!state || FAILED(state->Seek({}, STREAM_SEEK_SET, nullptr))) {
            return E_FAIL;
        }
        const ULONG needed = SizeOf(*state.Get());
        if (size < needed) {
            return STG_E_MEDIUMFULL;
        }
        const HRESULT read = state->Read(memory, needed, nullptr);
        if (SUCCEEDED(read) && clearDirty) {
            m_persistence.SetModified(false);
        }
        return read;
    });
}

STDMETHODIMP PersistMemoryPart::GetSizeMax(ULONG* size) {
    return Guard(size, [&]() -> HRESULT {
        const common::ComPtr<IStream> state = SavedState(m_persistence);
        *size = state ? SizeOf(*state.Get()) : 0;
        return state ? S_OK : E_FAIL;
    });
}

STDMETHODIMP PersistMemoryPart::InitNew() {
    return Guard([&] { return m_persistence.WasLoaded() ? E_UNEXPECTED : m_persistence.InitNew(); });
}

} // namespace framework
