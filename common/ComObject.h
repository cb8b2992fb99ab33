// The base of COM objects.
#pragma once

#include <windows.h>

#include <atomic>

#include <unknwn.h>

namespace common {

/// Counts its references, of which its maker holds the first, and deletes itself with the last one.
template <class First, class... More>
class ComObject : public First, public More... {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        if (!object) {
            return E_POINTER;
        }
        *object = IsEqualIID(iid, IID_IUnknown) ? static_cast<First*>(this) : nullptr;
        Offer<First>(iid, object);
        (Offer<More>(iid, object), ...);
        if (!*object) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

private:
    template <class Interface>
    void Offer(REFIID iid, void** object) noexcept {
        if (IsEqualIID(iid, __uuidof(Interface))) {
            *object = static_cast<Interface*>(this);
        }
    }

    std::atomic<ULONG> m_references = 1;
};

} // namespace common
