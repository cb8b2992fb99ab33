#include "ProcessResources.h"

#include "GdiObjectCount.h"
#include "HeapUse.h"

#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <numeric>
#include <vector>

namespace {

/// The system keeps device contexts that were given back, and makes new ones while it keeps few. Asking for
/// as many at once as it keeps at most leaves the same number each time, unless one was never given back.
void FillContextCache() {
    constexpr size_t kKept = 64;
    std::array<HDC, kKept> contexts = {};
    for (HDC& context : contexts) {
        context = GetDC(nullptr);
    }
    for (const HDC context : contexts) {
        ReleaseDC(nullptr, context);
    }
}

/// The system makes the brush of each of its colours when somebody first needs it, and keeps it.
void MakeColourBrushes() {
    for (int colour = COLOR_SCROLLBAR; colour <= COLOR_MENUBAR; ++colour) {
        GetSysColorBrush(colour);
    }
    // The half-tone brush of scroll bars has no number; a window of the process itself must ask.
    const HWND window =
        CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const HDC context = GetDC(window);
    DefWindowProcW(window, WM_CTLCOLORSCROLLBAR, reinterpret_cast<WPARAM>(context), 0);
    ReleaseDC(window, context);
    DestroyWindow(window);
}

std::vector<HMENU> CreateAllMenus() {
    std::vector<HMENU> menus;
    while (const HMENU menu = CreateMenu()) {
        menus.push_back(menu);
    }
    return menus;
}

/// Destroys all menus but the first ones.
void ShrinkTo(size_t count, std::vector<HMENU>& menus) {
    std::for_each(menus.begin() + static_cast<std::ptrdiff_t>(count), menus.end(), DestroyMenu);
    menus.resize(count);
}

/// Most of the user objects that can be made, which stay: making all of them takes seconds.
size_t Ballast() {
    constexpr size_t kLeft = 4096; // for the process, between two counts
    static const size_t kept = [] {
        static std::vector<HMENU> menus = CreateAllMenus();
        ShrinkTo(menus.size() - kLeft, menus);
        return menus.size();
    }();
    return kept;
}

/// User objects that can still be made show how many there are.
int UserObjects() {
    constexpr size_t kAll = 0x10000;
    const size_t ballast = Ballast();
    std::vector<HMENU> menus = CreateAllMenus();
    const size_t left = menus.size();
    ShrinkTo(0, menus);
    return static_cast<int>(kAll - ballast - left);
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
                                    &needed) != 0) {
        buffer.resize(buffer.size() * 2);
    }
    const auto& table = *reinterpret_cast<const Table*>(buffer.data());
    const Handle* const handles = table.handles;
    int count = 0;
    for (ULONG i = 0; i < table.count; ++i) {
        count += handles[i].process == GetCurrentProcessId();
    }
    return count;
}

} // namespace

ProcessResources ProcessResources::Count() {
    FillContextCache();
    MakeColourBrushes();
    ProcessResources held = {
        .gdiObjects = GdiObjectsByType(), .userObjects = UserObjects(), .handles = Handles()};
    const HeapUse heaps = HeapUse::Count();
    held.heapBytes = heaps.bytes;
    held.heapBlocks = heaps.blocks;
    return held;
}

ProcessResources ProcessResources::operator-(const ProcessResources& before) const {
    ProcessResources grown = *this;
    for (size_t type = 0; type < gdiObjects.size(); ++type) {
        grown.gdiObjects[type] -= before.gdiObjects[type];
    }
    grown.userObjects -= before.userObjects;
    grown.handles -= before.handles;
    grown.heapBytes -= before.heapBytes;
    grown.heapBlocks -= before.heapBlocks;
    return grown;
}

int ProcessResources::AllGdiObjects() const {
    return std::accumulate(gdiObjects.begin(), gdiObjects.end(), 0);
}

std::string ProcessResources::Text() const {
    char words[160];
    std::snprintf(words, sizeof words,
                  "GDI objects %+d, user objects %+d, handles %+d, heap %+lld bytes in %+lld blocks",
                  AllGdiObjects(), userObjects, handles, static_cast<long long>(heapBytes),
                  static_cast<long long>(heapBlocks));
    return words;
}

std::string ProcessResources::GrowthSince(const ProcessResources& before, std::int64_t slack) const {
    std::string growth;
    const auto note = [&](const std::string& what, std::int64_t then, std::int64_t now) {
        if (now > then) {
            growth += what + ": " + std::to_string(then) + " to " + std::to_string(now) + "; ";
        }
    };
    for (size_t type = 0; type < gdiObjects.size(); ++type) {
        note("GDI objects of type " + std::to_string(type), before.gdiObjects[type], gdiObjects[type]);
    }
    note("user objects", before.userObjects, userObjects);
    note("handles", before.handles, handles);
    if (heapBytes > before.heapBytes + slack) {
        note("heap bytes", before.heapBytes, heapBytes);
    }
    return growth;
}
