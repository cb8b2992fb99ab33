// Owners of COM references, BSTRs and VARIANTs.
#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

#include <objbase.h>
#include <oleauto.h>

namespace common {

/// Owns one reference to a COM interface.
template <class Interface>
class ComPtr {
public:
    ComPtr() noexcept = default;
    /// Adds a reference to what the caller holds; null is allowed.
    explicit ComPtr(Interface* pointer) noexcept : m_pointer(pointer) {
        if (m_pointer) {
            m_pointer->AddRef();
        }
    }
    ComPtr(ComPtr&& other) noexcept : m_pointer(other.Detach()) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        ComPtr(std::move(other)).Swap(*this);
        return *this;
    }
    ~ComPtr() { Reset(); }

    /// A second owner of the same interface; copying is always explicit.
    [[nodiscard]] ComPtr Copy() const noexcept { return ComPtr(m_pointer); }

    [[nodiscard]] Interface* Get() const noexcept { return m_pointer; }
    Interface* operator->() const noexcept { return m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

    /// Releases what is held. The member is null before the release runs, which may call back.
    void Reset() noexcept {
        if (Interface* held = Detach()) {
            held->Release();
        }
    }

    /// Returns the reference, which the caller now owns.
    [[nodiscard]] Interface* Detach() noexcept { return std::exchange(m_pointer, nullptr); }

    /// Releases what is held and returns where a function stores the reference that it returns.
    [[nodiscard]] Interface** Receive() noexcept {
        Reset();
        return &m_pointer;
    }
    [[nodiscard]] void** ReceiveVoid() noexcept { return reinterpret_cast<void**>(Receive()); }

    /// Another interface of the same object; null when it has none.
    template <class Other>
    [[nodiscard]] ComPtr<Other> As(REFIID iid) const noexcept {
        ComPtr<Other> other;
        if (m_pointer && FAILED(m_pointer->QueryInterface(iid, other.ReceiveVoid()))) {
            static_cast<void>(other.Detach()); // what a failing query leaves there is no reference
        }
        return other;
    }
    template <class Other>
    [[nodiscard]] ComPtr<Other> As() const noexcept {
        return As<Other>(__uuidof(Other));
    }

    void Swap(ComPtr& other) noexcept { std::swap(m_pointer, other.m_pointer); }

private:
    Interface* m_pointer = nullptr;
};

/// Asks any object for an interface; null when there is no object or it has none.
template <class Interface>
[[nodiscard]] ComPtr<Interface> Query(IUnknown* object, REFIID iid) noexcept {
    return ComPtr<IUnknown>(object).As<Interface>(iid);
}

/// Owns one VARIANT and what it holds.
class Variant {
public:
    Variant() noexcept { VariantInit(&m_value); }
    ~Variant() { VariantClear(&m_value); }
    Variant(Variant&& other) noexcept : m_value(other.m_value) { VariantInit(&other.m_value); }
    Variant& operator=(Variant&& other) noexcept {
        std::swap(m_value, other.m_value);
        return *this;
    }

    [[nodiscard]] const VARIANT& Get() const noexcept { return m_value; }
    [[nodiscard]] VARIANT* operator&() noexcept { return &m_value; }

private:
    VARIANT m_value;
};

/// Owns one BSTR; null after a failed allocation.
class Bstr {
public:
    Bstr() noexcept = default;
    explicit Bstr(LPCOLESTR text) noexcept : m_text(SysAllocString(text)) {}
    explicit Bstr(std::wstring_view text) noexcept
        : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    [[nodiscard]] BSTR Get() const noexcept { return m_text; }
    [[nodiscard]] UINT Length() const noexcept { return SysStringLen(m_text); }

    /// Frees what is held and returns where a function stores the text that it returns.
    [[nodiscard]] BSTR* Receive() noexcept {
        SysFreeString(std::exchange(m_text, nullptr));
        return &m_text;
    }

private:
    BSTR m_text = nullptr;
};

} // namespace common
