#include "window/WindowPlacement.h"

namespace viewer {

namespace {

constexpr wchar_t kPlacementValue[] = L"WindowPlacement";

} // namespace

bool RestorePlacement(HWND window, const wchar_t* settingsKey) {
    WINDOWPLACEMENT placement = {};
    DWORD bytes = sizeof placement;
    if (RegGetValueW(HKEY_CURRENT_USER, settingsKey, kPlacementValue, RRF_RT_REG_BINARY, nullptr, &placement,
                     &bytes) ||
        bytes != sizeof placement || placement.length != sizeof placement) {
        return false;
    }
    const bool maximised =
        placement.showCmd == SW_SHOWMAXIMIZED ||
        (placement.showCmd == SW_SHOWMINIMIZED && placement.flags & WPF_RESTORETOMAXIMIZED);
    // The system brings a place that no monitor shows any more back to one.
    placement.showCmd = SW_HIDE;
    SetWindowPlacement(window, &placement);
    return maximised;
}

void StorePlacement(HWND window, const wchar_t* settingsKey) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (GetWindowPlacement(window, &placement)) {
        RegSetKeyValueW(HKEY_CURRENT_USER, settingsKey, kPlacementValue, REG_BINARY, &placement,
                        sizeof placement);
    }
}

} // namespace viewer
