#include "DialogKeyboard.h"

#include <utility>

namespace {

HWND served = nullptr;

bool IsKeyFor(const MSG& message, HWND dialog) {
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST &&
           (message.hwnd == dialog || IsChild(dialog, message.hwnd));
}

} // namespace

void DialogKeyboard::Start(HWND dialog) {
    Stop();
    served = dialog;
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
    if (code == HC_ACTION && removal == PM_REMOVE && IsKeyFor(*message, served) &&
        IsDialogMessageW(served, message)) {
        *message = {}; // done; what the host's loop still gets means nothing to anybody
    }
    return CallNextHookEx(nullptr, code, removal, parameter);
}
