// What the host publishes in its resource module.
#pragma once

#include "common/Handles.h"
#include "mxovshare.h"

#include <array>
#include <string>

inline HINSTANCE Resources() {
    return mxovshare::OVApplication::hMXOVResInstance;
}

inline std::wstring Text(UINT id) {
    std::array<wchar_t, 256> buffer{};
    const int length = LoadStringW(Resources(), id, buffer.data(), static_cast<int>(buffer.size()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

inline SIZE BitmapSize(WORD id) {
    const common::UniqueBitmap bitmap(LoadBitmapW(Resources(), MAKEINTRESOURCEW(id)));
    BITMAP data{};
    GetObjectW(bitmap.get(), sizeof data, &data);
    return {data.bmWidth, data.bmHeight};
}
