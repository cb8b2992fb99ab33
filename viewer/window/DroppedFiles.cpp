#include "window/DroppedFiles.h"

namespace viewer {

namespace {

std::vector<std::wstring> FilesOf(HDROP drop) {
    constexpr UINT kCount = 0xFFFFFFFF; // asks for the number of files
    std::vector<std::wstring> files(DragQueryFileW(drop, kCount, nullptr, 0));
    for (UINT i = 0; i < files.size(); ++i) {
        const UINT length = DragQueryFileW(drop, i, nullptr, 0);
        files[i].resize(length);
        DragQueryFileW(drop, i, files[i].data(), length + 1);
    }
    return files;
}

} // namespace

std::vector<std::wstring> TakeDroppedFiles(HDROP drop) {
    std::vector<std::wstring> files = FilesOf(drop);
    DragFinish(drop);
    return files;
}

bool CanPasteFiles() {
    return IsClipboardFormatAvailable(CF_HDROP);
}

std::vector<std::wstring> PastedFiles(HWND owner) {
    if (!OpenClipboard(owner)) {
        return {};
    }
    const auto drop = static_cast<HDROP>(GetClipboardData(CF_HDROP));
    std::vector<std::wstring> files = drop ? FilesOf(drop) : std::vector<std::wstring>();
    CloseClipboard();
    return files;
}

std::optional<AttachMode> AttachModeByKey() {
    if (GetAsyncKeyState(VK_CONTROL) < 0) {
        return AttachMode::Copy;
    }
    if (GetAsyncKeyState(VK_MENU) < 0) {
        return AttachMode::Link;
    }
    return std::nullopt;
}

} // namespace viewer
