#include "Fuzz.h"
#include "HostedControl.h"
#include "PackageBuilder.h"
#include "ProcessResources.h"
#include "Progress.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr uint64_t kWarmUpCycles = 30;
constexpr uint64_t kReportEvery = 1000;
constexpr int kBareWarmUp = 10;
constexpr int kBareCycles = 50;
constexpr std::int64_t kCycleHeapSlack = 0x800; // of the system's caches, however many cycles there are
constexpr int kPopupTemplate = 216;
constexpr int kManifest = 2; // of a module that brings its own

void Press(HWND window, int x, int y) {
    // A list view follows the mouse inside its handling of the press: the release is in the queue by then.
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    HostedControl::Pump();
}

void PressFirstRow(HWND list) {
    RECT row = {};
    row.left = LVIR_LABEL;
    if (!SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row))) {
        throw std::runtime_error("no document is listed");
    }
    Press(list, row.left + 10, (row.top + row.bottom) / 2);
}

void OneCycle(const PackageBuilder& package, Plant plant) {
    HostedControl control;
    if (control.Activate() != S_OK) {
        throw std::runtime_error("the control is not activated");
    }
    Value folder(package.Path());
    if (Invoke(control.Automation(), kLoadFile, DISPATCH_METHOD, {folder.Get(), folder.Get()}) != S_OK) {
        throw std::runtime_error("the package is not loaded");
    }
    HostedControl::Pump();
    const HWND dialog = control.Dialog();
    for (const int box : {kPartBox, kGCodeBox}) {
        Press(GetDlgItem(dialog, box), 40, 8);
    }
    PressFirstRow(GetDlgItem(dialog, kAdditionalList));
    if (!FindWindowW(L"#32770", L"Document Properties")) {
        throw std::runtime_error("a click on a document shows no popup");
    }
    if (Invoke(control.Automation(), kClose, DISPATCH_METHOD) != S_OK) {
        throw std::runtime_error("Close failed");
    }
    Spring(plant);
}

INT_PTR CALLBACK HandleNothing(HWND /*dialog*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return message == WM_INITDIALOG;
}

/// The common controls that the module's own manifest asks for, while it lives.
class ModuleControls {
public:
    explicit ModuleControls(HMODULE module) {
        ACTCTXW context = {};
        context.cbSize = sizeof context;
        context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        context.hModule = module;
        context.lpResourceName = MAKEINTRESOURCEW(kManifest);
        m_context = CreateActCtxW(&context);
        if (m_context == INVALID_HANDLE_VALUE || !ActivateActCtx(m_context, &m_cookie)) {
            throw std::runtime_error("the module's manifest cannot be used");
        }
    }
    ~ModuleControls() {
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_context);
    }
    ModuleControls(const ModuleControls&) = delete;
    ModuleControls& operator=(const ModuleControls&) = delete;

private:
    HANDLE m_context;
    ULONG_PTR m_cookie = 0;
};

/// The popup's dialog template alone, without the control's code.
void BareCycles(HMODULE module, int count) {
    const ModuleControls controls(module);
    for (int cycle = 0; cycle < count; ++cycle) {
        BeginStep("bare cycle", static_cast<uint64_t>(cycle));
        const HWND dialog =
            CreateDialogParamW(module, MAKEINTRESOURCEW(kPopupTemplate), nullptr, HandleNothing, 0);
        if (!dialog) {
            throw std::runtime_error("the popup's template makes no dialog");
        }
        ShowWindow(dialog, SW_SHOW);
        HostedControl::Pump();
        DestroyWindow(dialog);
    }
}

/// The bytes that the platform's controls themselves leave on the heap for each popup: under Wine a static
/// control keeps 24 bytes of every window that was given a font.
std::int64_t PlatformBytes(HMODULE module) {
    BareCycles(module, kBareWarmUp);
    const ProcessResources before = ProcessResources::Count();
    BareCycles(module, kBareCycles);
    const std::int64_t grown = (ProcessResources::Count() - before).heapBytes;
    return std::max<std::int64_t>(0, grown) / kBareCycles;
}

} // namespace

std::string RunCycles(uint64_t count, Plant plant) {
    const PackageBuilder package;
    const ControlModule module;
    for (uint64_t cycle = 0; cycle < kWarmUpCycles; ++cycle) {
        BeginStep("warm-up", cycle);
        OneCycle(package, plant);
    }
    const std::int64_t platform = PlatformBytes(module.Handle());
    std::printf("platform: %lld bytes for each popup\n", static_cast<long long>(platform));
    std::fflush(stdout);
    const ProcessResources start = ProcessResources::Count();
    std::string growth;
    for (uint64_t cycle = kWarmUpCycles; cycle < count && growth.empty(); ++cycle) {
        BeginStep("cycle", cycle);
        OneCycle(package, plant);
        const uint64_t popups = cycle + 1 - kWarmUpCycles;
        if (popups % kReportEvery && cycle + 1 != count) {
            continue;
        }
        ProcessResources expected = start;
        expected.userObjects += static_cast<int>(popups); // the mouse hook that stays, as it is meant to
        expected.heapBytes += static_cast<std::int64_t>(popups) * platform;
        const ProcessResources now = ProcessResources::Count();
        growth = now.GrowthSince(expected, kCycleHeapSlack);
        std::printf("%llu cycles from the %lluth on: %s\n", popups, kWarmUpCycles,
                    (now - start).Text().c_str());
        std::fflush(stdout);
    }
    return growth;
}
