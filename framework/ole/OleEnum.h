// Enumerators over a copy of a list: what is enumerated may change or go while a client still holds one.
#pragma once

#include "common/ComPtr.h"
#include "core/ModuleState.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>
#include <vector>

namespace framework {

/// Enumerator `Interface` (IEnumXxx) over items of type Item. Copy(from, to) makes what a client receives and
/// returns FALSE when memory is out; Clean(item) undoes it, for items that a failing Next has copied already.
/// Keep is what the enumerator itself holds of each item.
template <class Interface, const IID& iid, class Item, class Keep, class Policy>
class OleEnum final : public Interface {
public:
    explicit OleEnum(std::vector<Keep> items, size_t next = 0) : m_items(std::move(items)), m_next(next) {
        AfxOleLockApp();
    }
    OleEnum(const OleEnum&) = delete;
    OleEnum& operator=(const OleEnum&) = delete;

    STDMETHODIMP QueryInterface(REFIID wanted, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        *object = wanted == IID_IUnknown || wanted == iid ? this : nullptr;
        if (!*object) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }

    STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) override {
        if (fetched) {
            *fetched = 0;
        }
        if (!items || (count != 1 && !fetched)) {
            return E_POINTER;
        }
        ULONG given = 0;
        for (; given < count && m_next < m_items.size(); ++given, ++m_next) {
            if (!Policy::Copy(m_items[m_next], items[given])) {
                while (given > 0) {
                    Policy::Clean(items[--given]);
                    --m_next;
                }
                return E_OUTOFMEMORY;
            }
        }
        if (fetched) {
            *fetched = given;
        }
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const size_t left = m_items.size() - m_next;
        m_next += std::min<size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        m_next = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** clone) override {
        if (!clone) {
            return E_POINTER;
        }
        *clone = nullptr;
        try {
            std::vector<Keep> items;
            items.reserve(m_items.size());
            for (const Keep& item : m_items) {
                items.push_back(Policy::Duplicate(item));
            }
            *clone = new OleEnum(std::move(items), m_next);
            return S_OK;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

private:
    ~OleEnum() { AfxOleUnlockApp(); }

    std::atomic<LONG> m_references = 1;
    std::vector<Keep> m_items;
    size_t m_next;
};

} // namespace framework
