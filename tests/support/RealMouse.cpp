#include "RealMouse.h"

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

void Send(DWORD flags, LONG x = 0, LONG y = 0, DWORD time = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.time = time;
    input.mi.dx = x;
    input.mi.dy = y;
    SendInput(1, &input, sizeof input);
}

/// A pixel in the units of absolute mouse input: the middle of the units that mean the pixel.
LONG ToAbsolute(LONG pixel, int screenSize) {
    return (pixel * 2 + 1) * (kAbsoluteRange / 2) / screenSize;
}

} // namespace

bool PumpUntil(const std::function<bool()>& condition, ULONGLONG patience) {
    const ULONGLONG end = GetTickCount64() + patience;
    while (!condition()) {
        const ULONGLONG now = GetTickCount64();
        if (now >= end) {
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
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

void RealMouse::MoveTo(HWND window, POINT client) const {
    ClientToScreen(window, &client);
    Send(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, ToAbsolute(client.x, GetSystemMetrics(SM_CXSCREEN)),
         ToAbsolute(client.y, GetSystemMetrics(SM_CYSCREEN)));
}

bool RealMouse::Reach(HWND window, POINT client) const {
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

void RealMouse::Press() const {
    Send(MOUSEEVENTF_LEFTDOWN);
}

void RealMouse::Release() const {
    Send(MOUSEEVENTF_LEFTUP);
}

void RealMouse::Click() const {
    Press();
    Release();
}

void RealMouse::DoubleClick() const {
    const DWORD time = GetTickCount();
    for (const DWORD flags :
         {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        Send(flags, 0, 0, time);
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
