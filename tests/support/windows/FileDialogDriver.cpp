#include "FileDialogDriver.h"

#include <utility>

namespace {

constexpr UINT kInterval = 50; // milliseconds between two attempts

std::function<void(HWND)> currentAct;

/// A descendant by class and, unless that is empty, by text.
HWND FindControl(HWND dialog, const std::wstring& className, const std::wstring& text = L"") {
    struct Search {
        const std::wstring& className;
        const std::wstring& text;
        HWND found;
    } search{className, text, nullptr};
    EnumChildWindows(
        dialog,
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            wchar_t name[40] = L"";
            wchar_t shown[200] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            GetWindowTextW(window, shown, ARRAYSIZE(shown));
            if (wanted.className != name || (!wanted.text.empty() && wanted.text != shown)) {
                return TRUE;
            }
            wanted.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// The visible dialog of this thread that shows files, or null.
HWND FindFileDialog() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            wchar_t name[10] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            if (std::wstring(name) != L"#32770" || !IsWindowVisible(window) ||
                !FindControl(window, L"Edit") || !FindControl(window, L"SHELLDLL_DefView")) {
                return TRUE;
            }
            *reinterpret_cast<HWND*>(parameter) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

void CALLBACK ActOnDialog(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
    static bool acting = false;
    const HWND dialog = acting ? nullptr : FindFileDialog();
    if (!dialog) {
        return;
    }
    acting = true;
    currentAct(dialog);
    acting = false;
}

} // namespace

FileDialogDriver::FileDialogDriver(std::function<void(HWND)> act)
    : m_timer(SetTimer(nullptr, 0, kInterval, ActOnDialog)) {
    currentAct = std::move(act);
}

FileDialogDriver::~FileDialogDriver() {
    KillTimer(nullptr, m_timer);
    currentAct = nullptr;
}

void FileDialogDriver::Choose(HWND dialog, const std::wstring& path) {
    SendMessageW(FindControl(dialog, L"Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

void FileDialogDriver::Cancel(HWND dialog) {
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

HWND FileDialogDriver::CheckBox(HWND dialog, const std::wstring& label) {
    return FindControl(dialog, L"Button", label);
}
