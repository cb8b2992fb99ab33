#include "DialogKeyboard.h"

#include <string_view>

namespace docview {

namespace {

constexpr WPARAM kSystemCommand = 0xFFF0; // the low four bits are used by the system

HWND served = nullptr;
DialogKeyboard::CloseAction closeServed = nullptr;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

bool IsLetterOrDigit(WPARAM key) {
    return (key >= L'A' && key <= L'Z') || (key >= L'0' && key <= L'9');
}

/// Whether a key has no meaning in a dialog or an edit control, but may be a shortcut of the host: a function
/// key, or Ctrl with a letter that is no editing command. Ctrl with Alt types characters.
bool IsHostShortcut(const MSG& message) {
    constexpr std::wstring_view kEditing = L"ACVXYZ";
    if (message.message != WM_KEYDOWN) {
        return false;
    }
    if (message.wParam >= VK_F1 && message.wParam <= VK_F24) {
        return true;
    }
    return IsDown(VK_CONTROL) && !IsDown(VK_MENU) && IsLetterOrDigit(message.wParam) &&
           kEditing.find(static_cast<wchar_t>(message.wParam)) == std::wstring_view::npos;
}

bool IsKeyFor(const MSG& message, HWND dialog) {
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST && !IsHostShortcut(message) &&
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
    served = dialog;
    closeServed = close;
    m_hook.reset(SetWindowsHookExW(WH_GETMESSAGE, Hook, nullptr, GetCurrentThreadId()));
}

LRESULT CALLBACK DialogKeyboard::Hook(int code, WPARAM removal, LPARAM parameter) noexcept {
    auto* message = reinterpret_cast<MSG*>(parameter);
    if (code == HC_ACTION && removal == PM_REMOVE && Handle(*message)) {
        *message = {}; // handled: the host's loop gets WM_NULL
    }
    return CallNextHookEx(nullptr, code, removal, parameter);
}

} // namespace docview
