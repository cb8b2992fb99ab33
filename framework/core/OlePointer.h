// OlePtr: owns one reference to a COM interface.
#pragma once

#include "Types.h"

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <utility>

template <class Interface>
class OlePtr {
public:
    OlePtr() noexcept = default;
    /// Takes a further reference to what the caller holds; null is allowed.
    explicit OlePtr(Interface* pointer) noexcept : m_pointer(pointer) {
        if (m_pointer) {
            m_pointer->AddRef();
        }
    }
    OlePtr(OlePtr&& other) noexcept : m_pointer(other.Detach()) {}
    OlePtr& operator=(OlePtr&& other) noexcept {
        OlePtr(std::move(other)).Swap(*this);
        return *this;
    }
    ~OlePtr() { Reset(); }

    /// A second owner of the same interface; copying is never silent.
    [[nodiscard]] OlePtr Copy() const noexcept { return OlePtr(m_pointer); }

    [[nodiscard]] Interface* Get() const noexcept { return m_pointer; }
    Interface* operator->() const noexcept { return m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

    /// Releases what is held. The member is null before the release runs, which may call back.
    void Reset() noexcept {
        if (Interface* held = Detach()) {
            held->Release();
        }
    }

    /// Gives the reference up to the caller.
    [[nodiscard]] Interface* Detach() noexcept { return std::exchange(m_pointer, nullptr); }

    /// Releases what is held and gives the place where a function that returns an interface puts it.
    [[nodiscard]] Interface** Receive() noexcept {
        Reset();
        return &m_pointer;
    }
    [[nodiscard]] void** ReceiveVoid() noexcept { return reinterpret_cast<void**>(Receive()); }

    /// Another interface of the same object; null when it has none.
    template <class Other>
    [[nodiscard]] OlePtr<Other> As(REFIID iid) const noexcept {
        OlePtr<Other> other;
        if (m_pointer && FAILED(m_pointer->QueryInterface(iid, other.ReceiveVoid()))) {
            static_cast<void>(other.Detach()); // whatever a failing query left there is no reference
        }
        return other;
    }

    void Swap(OlePtr& other) noexcept { std::swap(m_pointer, other.m_pointer); }

private:
    Interface* m_pointer = nullptr;
};

/// Asks any object for an interface; null when there is no object or it has none.
template <class Interface>
[[nodiscard]] OlePtr<Interface> OleQuery(IUnknown* object, REFIID iid) noexcept {
    return OlePtr<IUnknown>(object).As<Interface>(iid);
}

/// Owns one VARIANT and what it holds.
class OleVariant {
public:
    OleVariant() noexcept { ::VariantInit(&m_value); }
    ~OleVariant() { ::VariantClear(&m_value); }
    OleVariant(OleVariant&& other) noexcept : m_value(other.m_value) { ::VariantInit(&other.m_value); }
    OleVariant& operator=(OleVariant&& other) noexcept {
        std::swap(m_value, other.m_value);
        return *this;
    }

    [[nodiscard]] const VARIANT& Get() const noexcept { return m_value; }
    [[nodiscard]] VARIANT* operator&() noexcept { return &m_value; }

private:
    VARIANT m_value;
};

/// Owns one BSTR.
class OleString {
public:
    OleString() noexcept = default;
    /// Null when memory is out.
    explicit OleString(LPCOLESTR text) noexcept : m_text(::SysAllocString(text)) {}
    OleString(OleString&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    OleString& operator=(OleString&& other) noexcept {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~OleString() { ::SysFreeString(m_text); }

    [[nodiscard]] BSTR Get() const noexcept { return m_text; }
    [[nodiscard]] BSTR* Receive() noexcept { return &m_text; }

private:
    BSTR m_text = nullptr;
};

/// A copy of a text that the receiver frees with CoTaskMemFree; null when memory is out.
[[nodiscard]] inline LPOLESTR OleTaskString(LPCOLESTR text) noexcept {
    const size_t bytes = (::lstrlen(text) + size_t{1}) * sizeof(OLECHAR);
    auto* copy = static_cast<LPOLESTR>(::CoTaskMemAlloc(bytes));
    if (copy) {
        ::CopyMemory(copy, text, bytes);
    }
    return copy;
}
