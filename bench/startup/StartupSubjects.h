// What is started in a frame window: the control, a control with one list view, the windows of the control's
// dialog without the control.
#pragma once

#include <windows.h>

struct Subject {
    const wchar_t* name;
    HWND (*show)(HWND frame); ///< the window that has it all; null when it did not come up
    int lists;                ///< list views that it shows
};

extern const Subject kControl;
extern const Subject kMinimal;
extern const Subject kWindows;

/// A visible window for any of them, painted.
HWND CreateFrame();

/// Handles messages until none is waiting.
void HandleMessages();

/// Whether no visible window below this one waits for its painting.
bool IsPainted(HWND window);

/// Visible list views below a window.
int CountLists(HWND window);
