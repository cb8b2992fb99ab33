#include "Resources.h"

#include "GdiObjectCount.h"

#include <windows.h>

#include <winternl.h>

#include <array>
#include <cstdio>
#include <numeric>
#include <vector>

namespace {

/// The system keeps device contexts that were given back, and makes new ones while it keeps few. Asking for
/// as many at once as it keeps at most leaves the same number each time, unless one was never given back.
void FillContextCache() {
    constexpr size_t kKept = 64;
    std::array<HDC, kKept> contexts = {};
    for (HDC& context : contexts)
        context = GetDC(nullptr);
    for (const HDC context : contexts)
        ReleaseDC(nullptr, context);
}

/// The system makes the brush of each of its colours when somebody first needs it, and keeps it.
void MakeColourBrushes() {
    for (int colour = COLOR_SCROLLBAR; colour <= COLOR_MENUBAR; ++colour)
        GetSysColorBrush(colour);
    // The half-tone brush of scroll bars has no number; a window of the process itself must ask.
    const HWND window =
        CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const HDC context = GetDC(window);
    DefWindowProcW(window, WM_CTLCOLORSCROLLBAR, reinterpret_cast<WPARAM>(context), 0);
    ReleaseDC(window, context);
    DestroyWindow(window);
}

/// User objects that can still be made tell how many there are.
int UserObjects() {
    constexpr int kAll = 0x10000;
    std::vector<HMENU> menus;
    while (const HMENU menu = CreateMenu())
        menus.push_back(menu);
    for (const HMENU menu : menus)
        DestroyMenu(menu);
    return kAll - static_cast<int>(menus.size());
}

int Handles() {
    struct Handle {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT value;
        void* object;
        ULONG access;
    };
    struct Table {
        ULONG count;
        Handle handles[1];
    };
    constexpr auto kHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    std::vector<BYTE> buffer(1 << 16);
    ULONG needed = 0;
    while (NtQuerySystemInformation(kHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                                    &needed) != 0)
        buffer.resize(buffer.size() * 2);
    const auto& table = *reinterpret_cast<const Table*>(buffer.data());
    const Handle* const handles = table.handles;
    int count = 0;
    for (ULONG i = 0; i < table.count; ++i)
        count += handles[i].process == GetCurrentProcessId();
    return count;
}

size_t HeapBytes() {
    constexpr DWORD kMost = 64;
    std::array<HANDLE, kMost> heaps = {};
    const DWORD count = GetProcessHeaps(kMost, heaps.data());
    size_t bytes = 0;
    for (DWORD i = 0; i < count && i < kMost; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry))
            bytes += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? entry.cbData : 0;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

} // namespace

Resources Resources::Count() {
    FillContextCache();
    MakeColourBrushes();
    return {GdiObjectsByType(), UserObjects(), Handles(), HeapBytes()};
}

std::string Resources::Difference(const Resources& before) const {
    const auto sum = [](const Resources& counts) {
        return std::accumulate(counts.gdiObjects.begin(), counts.gdiObjects.end(), 0);
    };
    char words[160];
    std::snprintf(words, sizeof words, "GDI objects %+d, user objects %+d, handles %+d, heap bytes %+lld",
                  sum(*this) - sum(before), userObjects - before.userObjects, handles - before.handles,
                  static_cast<long long>(heapBytes) - static_cast<long long>(before.heapBytes));
    return words;
}

std::string Resources::GrowthSince(const Resources& before, size_t slack) const {
    std::string growth;
    const auto note = [&](const char* what, size_t then, size_t now) {
        if (now > then)
            growth += std::string(what) + ": " + std::to_string(then) + " to " + std::to_string(now) + "; ";
    };
    for (size_t type = 0; type < gdiObjects.size(); ++type)
        note(("GDI objects of type " + std::to_string(type)).c_str(),
             static_cast<size_t>(before.gdiObjects[type]), static_cast<size_t>(gdiObjects[type]));
    note("user objects", static_cast<size_t>(before.userObjects), static_cast<size_t>(userObjects));
    note("handles", static_cast<size_t>(before.handles), static_cast<size_t>(handles));
    if (heapBytes > before.heapBytes + slack)
        note("heap bytes", before.heapBytes, heapBytes);
    return growth;
}
