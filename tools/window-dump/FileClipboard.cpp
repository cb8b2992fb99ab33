#include "FileClipboard.h"

#include "common/Utf8.h"

#include <algorithm>
#include <stdexcept>

#include <windows.h>

#include <shlobj.h>

namespace {

HGLOBAL DropList(const std::vector<std::string>& paths) {
    std::wstring names;
    for (const std::string& path : paths) {
        names += common::FromUtf8(path) + L'\0';
    }
    names += L'\0';
    const HGLOBAL memory =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + names.size() * sizeof(wchar_t));
    auto* list = static_cast<DROPFILES*>(GlobalLock(memory));
    if (!list) {
        throw std::runtime_error("there is no memory for the clipboard");
    }
    list->pFiles = sizeof *list;
    list->fWide = TRUE;
    std::ranges::copy(names, reinterpret_cast<wchar_t*>(list + 1));
    GlobalUnlock(memory);
    return memory;
}

// A window that has the clipboard open.
class ClipboardOwner {
public:
    ClipboardOwner()
        : m_window(CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        if (!OpenClipboard(m_window)) {
            throw std::runtime_error("the clipboard cannot be opened");
        }
    }
    ~ClipboardOwner() {
        CloseClipboard();
        DestroyWindow(m_window);
    }
    ClipboardOwner(const ClipboardOwner&) = delete;
    ClipboardOwner& operator=(const ClipboardOwner&) = delete;

private:
    HWND m_window;
};

} // namespace

void CopyFiles(const std::vector<std::string>& paths) {
    const ClipboardOwner owner;
    if (!EmptyClipboard() || !SetClipboardData(CF_HDROP, DropList(paths))) {
        throw std::runtime_error("the clipboard takes no files");
    }
}

std::string ClipboardText() {
    const ClipboardOwner owner;
    const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    const auto* text = static_cast<const wchar_t*>(memory ? GlobalLock(memory) : nullptr);
    std::string result = text ? common::ToUtf8(text) : std::string();
    GlobalUnlock(memory);
    return result;
}
