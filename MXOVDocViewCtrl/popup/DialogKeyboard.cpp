#include "DialogKeyboard.h"

#include <utility>

namespace {

constexpr WPARAM kSystemCommand = 0xFFF0; // the bits below are the system's own

HWND served = nullptr;
DialogKeyboard::CloseAction closeServed = nullptr;

bool IsKeyFor(const MSG& message, HWND dialog) {
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST &&
           (message.hwnd == dialog || IsChild(dialog, message.hwnd));
}

bool IsClose(const MSG& message, HWND dialog) {
    return message.message == WM_SYSCOMMAND && (message.wParam & kSystemCommand) == SC_CLOSE &&
           message.hwnd == dialog;
}

bool Handle(MSG& message) {
    if (IsClose(message, served)) {
        closeServed();
        return true;
    }
    return IsKeyFor(message, served) && IsDialogMessageW(served, &message);
}

} // namespace

void DialogKeyboard::Start(HWND dialog, CloseAction close) {
    Stop();
    served = dialog;
    closeServed = close;
    m_hook = SetWindowsHookExW(WH_GETMESSAGE, Hook, nullptr, GetCurrentThreadId());
}

void DialogKeyboard::Stop() {
    if (m_hook) {
        UnhookWindowsHookEx(std::exchange(m_hook, nullptr));
        served = nullptr;
    }
}

LRESULT CALLBACK DialogKeyboard::Hook(int code, WPARAM removal, LPARAM parameter) noexcept {
    auto* message = reinterpret_cast<MSG*>(parameter);
    if (code == HC_ACTION && removal == PM_REMOVE && Handle(*message)) {
        *message = {}; // done; what the host's loop still gets means nothing to anybody
    }
    return CallNextHookEx(nullptr, code, removal, parameter);
}
