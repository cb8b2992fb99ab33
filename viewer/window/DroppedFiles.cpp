#include "window/DroppedFiles.h"

namespace viewer {

std::vector<std::wstring> TakeDroppedFiles(HDROP drop) {
    constexpr UINT kCount = 0xFFFFFFFF; // asks for the number of files
    std::vector<std::wstring> files(DragQueryFileW(drop, kCount, nullptr, 0));
    for (UINT i = 0; i < files.size(); ++i) {
        const UINT length = DragQueryFileW(drop, i, nullptr, 0);
        files[i].resize(length);
        DragQueryFileW(drop, i, files[i].data(), length + 1);
    }
    DragFinish(drop);
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
