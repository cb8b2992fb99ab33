#include "Fuzz.h"
#include "HostedControl.h"
#include "PackageBuilder.h"
#include "ProcessResources.h"
#include "Progress.h"

#include <commctrl.h>
#include <dde.h>

#include <algorithm>
#include <random>

namespace {

constexpr std::int64_t kMessageHeapSlack =
    0x2000; // what the messages themselves leave set in the system's libraries

/// Messages that end the window or the program, wait for the user, or carry a pointer or a handle that the
/// system itself follows: the sender of these is trusted everywhere.
bool IsTrusted(UINT message) {
    constexpr UINT kTrusted[] = {WM_CREATE,
                                 WM_NCCREATE,
                                 WM_DESTROY,
                                 WM_NCDESTROY,
                                 WM_CLOSE,
                                 WM_QUIT,
                                 WM_ENDSESSION,
                                 WM_QUERYENDSESSION,
                                 WM_SYSCOMMAND,
                                 WM_NCLBUTTONDOWN,
                                 WM_ENTERIDLE,
                                 WM_NCLBUTTONDBLCLK,
                                 WM_NCRBUTTONDOWN,
                                 WM_CONTEXTMENU,
                                 WM_NCRBUTTONUP,
                                 WM_SETTEXT,
                                 WM_GETTEXT,
                                 WM_COPYDATA,
                                 WM_NCCALCSIZE,
                                 WM_GETMINMAXINFO,
                                 WM_STYLECHANGING,
                                 WM_STYLECHANGED,
                                 WM_DELETEITEM,
                                 WM_COMPAREITEM,
                                 WM_MEASUREITEM,
                                 WM_DRAWITEM,
                                 WM_NOTIFY,
                                 WM_HELP,
                                 WM_GETDLGCODE,
                                 WM_WINDOWPOSCHANGING,
                                 WM_WINDOWPOSCHANGED,
                                 WM_SIZING,
                                 WM_MOVING,
                                 WM_INPUT,
                                 WM_GETOBJECT,
                                 WM_DEVICECHANGE,
                                 WM_DDE_INITIATE,
                                 WM_PRINT,
                                 WM_PRINTCLIENT,
                                 WM_GETHOTKEY,
                                 WM_SETFONT,
                                 WM_SETICON,
                                 WM_SETREDRAW,
                                 WM_IME_REQUEST,
                                 WM_TIMER,
                                 WM_WININICHANGE,
                                 WM_DEVMODECHANGE,
                                 WM_PAINTICON,
                                 WM_ERASEBKGND,
                                 WM_ICONERASEBKGND,
                                 WM_DROPFILES,
                                 WM_NEXTMENU,
                                 WM_MENUCHAR,
                                 WM_INITMENUPOPUP,
                                 WM_INITDIALOG,
                                 WM_IME_KEYDOWN,
                                 WM_SYSKEYDOWN,
                                 WM_SYSCHAR,
                                 WM_POWERBROADCAST,
                                 WM_INPUTLANGCHANGEREQUEST, // the system keeps a block for each layout
                                 WM_INPUTLANGCHANGE};
    return std::find(std::begin(kTrusted), std::end(kTrusted), message) != std::end(kTrusted) ||
           (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) ||
           (message >= WM_DDE_FIRST && message <= WM_DDE_LAST) ||
           (message >= WM_IME_SETCONTEXT && message <= WM_IME_KEYUP) ||
           (message >= WM_CUT && message <= WM_HOTKEY) || // the clipboard's
           // Those of the common controls, whose pointers are followed; a group box is a button.
           (message >= LVM_FIRST && message < 0x2100);
}

/// A command that opens a dialog and waits for the user.
bool Waits(UINT message, WPARAM wParam) {
    const UINT id = LOWORD(wParam);
    return message == WM_COMMAND && (id == kAddButton || id == kSaveButton || id == kUpdateButton);
}

/// The control's windows whose procedure is ours.
std::vector<HWND> OwnWindows(const HostedControl& control) {
    std::vector<HWND> windows = {control.Window(), control.Dialog()};
    for (const int box : {kPartBox, kGCodeBox, kSetupBox, kAdditionalBox}) {
        windows.push_back(GetDlgItem(control.Dialog(), box));
    }
    return windows;
}

UINT AnyMessage(std::mt19937& random) {
    switch (random() % 8) {
    case 0:
        return WM_USER + random() % (0x8000 - WM_USER);
    case 1:
        return 0xC000 + random() % 0x4000;
    case 2:
        return WM_APP + random() % 0x4000;
    case 3:
        return WM_MOUSEFIRST + random() % (WM_MOUSELAST - WM_MOUSEFIRST + 1);
    case 4:
        return BM_GETCHECK + random() % 8;
    default:
        return random() % WM_USER;
    }
}

} // namespace

std::string FuzzMessages(uint64_t count, uint32_t seed, Plant plant) {
    std::mt19937 random(seed);
    const PackageBuilder package;
    const ControlModule module;
    const auto hammer = [&](uint64_t messages) {
        HostedControl control;
        if (control.Activate() != S_OK) {
            throw std::runtime_error("the control is not activated");
        }
        Value folder(package.Path());
        Invoke(control.Automation(), kInputParameter, DISPATCH_PROPERTYPUT, {folder.Get()});
        const std::vector<HWND> windows = OwnWindows(control);
        for (uint64_t i = 0; i < messages; ++i) {
            const HWND window = windows[random() % windows.size()];
            const UINT message = AnyMessage(random);
            const WPARAM wParam = random() % 2 ? random() % 0x800 : random();
            const LPARAM lParam = random() % 2 ? static_cast<LPARAM>(random() % 0x01000100) : 0;
            if (IsTrusted(message) || Waits(message, wParam)) {
                continue;
            }
            BeginStep("message, parameters, window", i,
                      {message, static_cast<long long>(wParam), lParam, GetDlgCtrlID(window)});
            SendMessageW(window, message, wParam, lParam);
            if (i % 1000 == 0) {
                HostedControl::Pump();
            }
            if (!IsWindow(window)) {
                throw std::runtime_error("a window went with message " + std::to_string(message));
            }
        }
        Spring(plant);
    };
    hammer(count / 20 + 1);
    const ProcessResources before = ProcessResources::Count();
    hammer(count);
    return ProcessResources::Count().GrowthSince(before, kMessageHeapSlack);
}
