#include "RealMouse.h"

#include <algorithm>

namespace {

constexpr int kAbsoluteRange = 65536;

struct Seen {
    int buttonMessages = 0;
    HWND buttonReceiver = nullptr;
    HWND receiver = nullptr;
};
Seen seen;

/// Moves to a corner of the screen: a window that comes up under the mouse would hear of a move nobody made.
void Park() {
    SetCursorPos(0, 0);
}

/// A pixel in the units of absolute mouse input: the middle of the units that mean the pixel.
LONG ToAbsolute(LONG pixel, int screenSize) {
    return (pixel * 2 + 1) * (kAbsoluteRange / 2) / screenSize;
}

} // namespace

void SendMouse(DWORD flags, POINT screen, DWORD time) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    input.mi.time = time;
    input.mi.dx = ToAbsolute(screen.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = ToAbsolute(screen.y, GetSystemMetrics(SM_CYSCREEN));
    SendInput(1, &input, sizeof input);
}

bool PumpUntil(const std::function<bool()>& condition, ULONGLONG patience) {
    const ULONGLONG end = GetTickCount64() + patience;
    while (!condition()) {
        const ULONGLONG now = GetTickCount64();
        if (now >= end) {
            return false;
        }
        // What does not come as a message, such as a file, is looked for too.
        constexpr ULONGLONG kTurn = 20; // milliseconds
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(std::min(end - now, kTurn)),
                                  QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

RealMouse::RealMouse() {
    Park();
    seen = Seen{};
    m_hook = SetWindowsHookExW(WH_MOUSE, Watch, nullptr, GetCurrentThreadId());
}

RealMouse::~RealMouse() {
    UnhookWindowsHookEx(m_hook);
    Park();
}

void RealMouse::MoveTo(HWND window, POINT client) {
    ClientToScreen(window, &client);
    m_place = client;
    SendMouse(MOUSEEVENTF_MOVE, m_place);
}

bool RealMouse::Reach(HWND window, POINT client) {
    constexpr int kAttempts = 20;
    constexpr ULONGLONG kPause = 500; // milliseconds
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        MoveTo(window, {client.x + attempt % 2, client.y}); // a move to the same place is none
        if (PumpUntil([&] { return seen.receiver == window; }, kPause)) {
            return true;
        }
    }
    return false;
}

void RealMouse::Press(DWORD button) const {
    SendMouse(button, m_place);
}

void RealMouse::Release(DWORD button) const {
    SendMouse(button, m_place);
}

void RealMouse::Click() const {
    Press();
    Release();
}

void RealMouse::DoubleClick() const {
    const DWORD time = GetTickCount();
    for (const DWORD flags :
         {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        SendMouse(flags, m_place, time);
    }
}

bool RealMouse::Delivered(int buttonMessages) const {
    return seen.buttonMessages >= buttonMessages;
}

HWND RealMouse::LastReceiver() const {
    return seen.buttonReceiver;
}

LRESULT CALLBACK RealMouse::Watch(int code, WPARAM message, LPARAM info) {
    if (code == HC_ACTION) {
        seen.receiver = reinterpret_cast<const MOUSEHOOKSTRUCT*>(info)->hwnd;
        if (message != WM_MOUSEMOVE) {
            ++seen.buttonMessages;
            seen.buttonReceiver = seen.receiver;
        }
    }
    return CallNextHookEx(nullptr, code, message, info);
}
