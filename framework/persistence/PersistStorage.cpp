#include "PersistStorage.h"

#include <utility>

namespace framework {

namespace {

constexpr wchar_t kStreamName[] = L"Contents";

} // namespace

STDMETHODIMP PersistStoragePart::GetClassID(CLSID* clsid) {
    return m_persistence.GetClassID(clsid);
}

STDMETHODIMP PersistStoragePart::IsDirty() {
    return Guard([&] { return m_persistence.IsDirty(); });
}

STDMETHODIMP PersistStoragePart::InitNew(IStorage* storage) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        return m_persistence.WasLoaded() ? CO_E_ALREADYINITIALIZED : m_persistence.InitNew();
    });
}

STDMETHODIMP PersistStoragePart::Load(IStorage* storage) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        if (m_persistence.WasLoaded()) {
            return CO_E_ALREADYINITIALIZED;
        }
        common::ComPtr<IStream> stream;
        const HRESULT opened =
            storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Receive());
        if (FAILED(opened)) {
            return opened;
        }
        OleStreamExchange exchange(*stream.Get(), TRUE);
        return m_persistence.Load(exchange);
    });
}

STDMETHODIMP PersistStoragePart::Save(IStorage* storage, BOOL sameAsLoad) {
    return Guard([&]() -> HRESULT {
        if (!storage) {
            return E_POINTER;
        }
        CLSID clsid{};
        m_persistence.GetClassID(&clsid);
        ::WriteClassStg(storage, clsid);
        common::ComPtr<IStream> stream;
        const HRESULT created = storage->CreateStream(
            kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.Receive());
        if (FAILED(created)) {
            return created;
        }
        OleStreamExchange exchange(*stream.Get(), FALSE);
        const HRESULT saved = m_persistence.Save(exchange, FALSE);
        m_saved = SUCCEEDED(saved);
        m_sameAsLoad = sameAsLoad != FALSE;
        return saved;
    });
}

STDMETHODIMP PersistStoragePart::SaveCompleted(IStorage* storage) {
    return Guard([&]() -> HRESULT {
        // A new storage is kept from now on; without one, what was saved elsewhere is a copy.
        if (std::exchange(m_saved, false) && (m_sameAsLoad || storage)) {
            m_persistence.Commit();
        }
        return S_OK;
    });
}

STDMETHODIMP PersistStoragePart::HandsOffStorage() {
    return S_OK; // no storage is kept
}

} // namespace framework
