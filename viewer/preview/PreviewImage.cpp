#include "preview/PreviewImage.h"

#include "package/BitmapFile.h"

namespace viewer {

common::UniqueBitmap LoadPreview(const std::wstring& path) {
    if (path.empty() || !docview::IsSoundBitmap(path)) {
        return {};
    }
    return common::UniqueBitmap(static_cast<HBITMAP>(
        LoadImageW(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
}

} // namespace viewer
