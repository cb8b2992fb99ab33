// Owners of what the platform hands out: each closes its thing once and only moves.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace viewer {

struct GdiDeleter {
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiDeleter>;

struct IconDeleter {
    void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

struct DcDeleter {
    void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};
using UniqueMemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

struct HandleDeleter {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
/// A kernel handle; empty is null, so an invalid file handle goes through `OwnFile`.
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleDeleter>;

[[nodiscard]] inline UniqueHandle OwnFile(HANDLE handle) noexcept {
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

struct SearchDeleter {
    void operator()(HANDLE search) const noexcept { FindClose(search); }
};
using UniqueSearch = std::unique_ptr<std::remove_pointer_t<HANDLE>, SearchDeleter>;

/// A search for files; empty when it found nothing.
[[nodiscard]] inline UniqueSearch OwnSearch(HANDLE search) noexcept {
    return UniqueSearch(search == INVALID_HANDLE_VALUE ? nullptr : search);
}

struct RegistryKeyDeleter {
    void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
using UniqueRegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, RegistryKeyDeleter>;

struct BstrDeleter {
    void operator()(BSTR text) const noexcept { SysFreeString(text); }
};
using UniqueBstr = std::unique_ptr<OLECHAR, BstrDeleter>;

struct TaskMemoryDeleter {
    void operator()(void* memory) const noexcept { CoTaskMemFree(memory); }
};
using UniqueTaskString = std::unique_ptr<wchar_t, TaskMemoryDeleter>;

/// A counted reference to a COM object.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ~ComPtr() { Reset(); }
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;

    void Reset() noexcept {
        if (Interface* object = std::exchange(m_object, nullptr)) {
            object->Release();
        }
    }
    /// Where a function stores the reference that it gives.
    [[nodiscard]] Interface** Put() noexcept {
        Reset();
        return &m_object;
    }
    [[nodiscard]] Interface* Get() const noexcept { return m_object; }
    Interface* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// The same object through another interface; empty when it has none.
    template <class Other>
    [[nodiscard]] ComPtr<Other> As() const noexcept {
        ComPtr<Other> other;
        if (m_object) {
            m_object->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(other.Put()));
        }
        return other;
    }

private:
    Interface* m_object = nullptr;
};

} // namespace viewer
