// Move-only owners of handles: each closes what it holds once.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include <objbase.h>

namespace common {

/// Passes a handle to the function that closes it; `Close` takes the handle alone.
template <auto Close>
struct HandleCloser {
    template <class Handle>
    void operator()(Handle handle) const noexcept {
        Close(handle);
    }
};

/// A handle that is empty when it is null.
template <class Handle, auto Close>
using UniqueOf = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Close>>;

using UniqueFont = UniqueOf<HFONT, &DeleteObject>;
using UniqueBitmap = UniqueOf<HBITMAP, &DeleteObject>;
using UniqueIcon = UniqueOf<HICON, &DestroyIcon>;
using UniqueMemoryDc = UniqueOf<HDC, &DeleteDC>;
using UniqueWindow = UniqueOf<HWND, &DestroyWindow>;
using UniqueHook = UniqueOf<HHOOK, &UnhookWindowsHookEx>;
using UniqueModule = UniqueOf<HMODULE, &FreeLibrary>;
using UniqueRegistryKey = UniqueOf<HKEY, &RegCloseKey>;
/// Text from CoTaskMemAlloc.
using UniqueTaskString = UniqueOf<wchar_t*, &CoTaskMemFree>;
/// A kernel handle. Empty is null, so what reports failure as INVALID_HANDLE_VALUE goes through `OwnFile`.
using UniqueHandle = UniqueOf<HANDLE, &CloseHandle>;
/// A search for files; see `OwnSearch`.
using UniqueSearch = UniqueOf<HANDLE, &FindClose>;

/// Owns what CreateFile returned; empty after a failure.
[[nodiscard]] inline UniqueHandle OwnFile(HANDLE file) noexcept {
    return UniqueHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// Owns what FindFirstFile returned; empty after a failure.
[[nodiscard]] inline UniqueSearch OwnSearch(HANDLE search) noexcept {
    return UniqueSearch(search == INVALID_HANDLE_VALUE ? nullptr : search);
}

} // namespace common
