#include "control/DpiContext.h"

namespace viewer {

namespace {

template <class Function>
Function* FindInUser32(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

} // namespace

void AllowMixedDpi() {
    if (auto* set = FindInUser32<decltype(SetThreadDpiHostingBehavior)>("SetThreadDpiHostingBehavior")) {
        set(DPI_HOSTING_BEHAVIOR_MIXED);
    }
}

bool IsMixedDpiAllowed() {
    auto* get = FindInUser32<decltype(GetThreadDpiHostingBehavior)>("GetThreadDpiHostingBehavior");
    return get && get() == DPI_HOSTING_BEHAVIOR_MIXED;
}

bool IsScaledBySystem(HWND window) {
    return GetAwarenessFromDpiAwarenessContext(GetWindowDpiAwarenessContext(window)) ==
           DPI_AWARENESS_SYSTEM_AWARE;
}

SIZE SizeForDpi(SIZE size, UINT from, UINT to) {
    const auto scaled = [from, to](LONG length) {
        return MulDiv(length, static_cast<int>(to), static_cast<int>(from));
    };
    return {scaled(size.cx), scaled(size.cy)};
}

} // namespace viewer
