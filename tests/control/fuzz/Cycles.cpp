#include "Fuzz.h"
#include "HostedControl.h"
#include "PackageBuilder.h"
#include "Resources.h"

#include <commctrl.h>

namespace {

constexpr uint64_t kWarmUp = 100;
constexpr size_t kHeapSlack = 0x800; // less than a byte for each of the fewest cycles that are run

void Press(HWND window, int x, int y) {
    // A list view follows the mouse inside its handling of the press: the release is in the queue by then.
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    HostedControl::Pump();
}

void OneCycle(const PackageBuilder& package, Plant plant) {
    HostedControl control;
    if (control.Activate() != S_OK)
        throw std::runtime_error("the control is not activated");
    Value folder(package.Path());
    if (Invoke(control.Automation(), kLoadFile, DISPATCH_METHOD, {folder.Get(), folder.Get()}) != S_OK)
        throw std::runtime_error("the package is not loaded");
    HostedControl::Pump();
    const HWND dialog = control.Dialog();
    for (const int box : {kPartBox, kGCodeBox})
        Press(GetDlgItem(dialog, box), 40, 8);
    // Beside the rows: the popup of a clicked document leaves its mouse hook installed, as it is meant to.
    const HWND list = GetDlgItem(dialog, kAdditionalList);
    if (SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 0)
        throw std::runtime_error("no document is listed");
    RECT area = {};
    GetClientRect(list, &area);
    Press(list, area.right - 3, area.bottom - 3);
    if (Invoke(control.Automation(), kClose, DISPATCH_METHOD) != S_OK)
        throw std::runtime_error("Close failed");
    Spring(plant);
}

} // namespace

std::string RunCycles(uint64_t count, Plant plant) {
    const PackageBuilder package;
    const ControlModule module;
    for (uint64_t cycle = 0; cycle < kWarmUp; ++cycle)
        OneCycle(package, Plant::kNone);
    const Resources before = Resources::Count();
    for (uint64_t cycle = kWarmUp; cycle < count; ++cycle)
        OneCycle(package, plant);
    HostedControl::Pump();
    return Resources::Count().GrowthSince(before, kHeapSlack);
}
