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

// A window that owns the clipboard while it is filled.
class ClipboardOwner {
public:
    ClipboardOwner()
        : m_window(CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        if (!OpenClipboard(m_window) || !EmptyClipboard()) {
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
    if (!SetClipboardData(CF_HDROP, DropList(paths))) {
        throw std::runtime_error("the clipboard takes no files");
    }
}
