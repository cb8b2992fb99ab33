// What the host publishes in its resource module.
#pragma once

#include "mxovshare.h"

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <type_traits>

template <auto Release>
struct Releaser {
    template <typename Handle>
    void operator()(Handle handle) const {
        Release(handle);
    }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, Releaser<&DeleteObject>>;
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, Releaser<&DeleteDC>>;
using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, Releaser<&DestroyIcon>>;

inline HINSTANCE Resources() {
    return mxovshare::OVApplication::hMXOVResInstance;
}

inline std::wstring Text(UINT id) {
    std::array<wchar_t, 256> buffer{};
    const int length = LoadStringW(Resources(), id, buffer.data(), static_cast<int>(buffer.size()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

inline SIZE BitmapSize(WORD id) {
    const Bitmap bitmap(LoadBitmapW(Resources(), MAKEINTRESOURCEW(id)));
    BITMAP data{};
    GetObjectW(bitmap.get(), sizeof data, &data);
    return {data.bmWidth, data.bmHeight};
}
