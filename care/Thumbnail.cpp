#include "care/Thumbnail.h"

#include "common/Handles.h"
#include "common/LongPath.h"
#include "common/SystemError.h"

#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

constexpr wchar_t kUsualFolder[] = L"Preview\\";
constexpr WORD kBitmapMark = 0x4D42; // "BM"

void RequireBitmap(const std::wstring& path) {
    const common::UniqueHandle file = common::OwnFile(CreateFileW(
        common::LongPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file) {
        throw Refusal{L"cannot read \"" + path + L"\": " + common::SystemErrorText(GetLastError())};
    }
    BITMAPFILEHEADER header = {};
    DWORD count = 0;
    LARGE_INTEGER size = {};
    if (!ReadFile(file.get(), &header, sizeof header, &count, nullptr) || count != sizeof header ||
        header.bfType != kBitmapMark || !GetFileSizeEx(file.get(), &size) ||
        header.bfOffBits >= size.QuadPart) {
        throw Refusal{L"\"" + path + L"\" is no bitmap file"};
    }
}

} // namespace

std::wstring ThumbnailName(const PackageEditor& editor) {
    std::wstring name = editor.FileInfo(inikey::kThumbnail);
    std::ranges::replace(name, L'/', L'\\');
    return editor.FindFile(name);
}

std::wstring SetThumbnail(PackageEditor& editor, const std::wstring& picture) {
    RequireBitmap(picture);
    std::wstring name = ThumbnailName(editor);
    if (name.empty()) {
        name = kUsualFolder + LastName(picture);
        const std::wstring present = editor.FindFile(name);
        if (!present.empty()) {
            throw Refusal{L"the package already has \"" + present + L"\", which is not its preview"};
        }
    }
    editor.AddFile(name, picture);
    editor.SetKey(inikey::kFileInfo, inikey::kThumbnail, name);
    return name;
}

} // namespace care
