#include "care/Thumbnail.h"

#include "common/FileBytes.h"
#include "common/SystemError.h"

#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

constexpr wchar_t kUsualFolder[] = L"Preview\\";
constexpr std::size_t kHeaderSize = 14;
constexpr std::size_t kPixelsField = 10; // where the pixels begin

// A number of four bytes in the order of the format.
std::uint32_t NumberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes[place + i - 1]);
    }
    return number;
}

void RequireBitmap(const std::wstring& path) {
    std::string header;
    std::uint64_t size = 0;
    if (const DWORD error = common::ReadBeginning(path, kHeaderSize, header, size); error != ERROR_SUCCESS) {
        throw Refusal{L"cannot read \"" + path + L"\": " + common::SystemErrorText(error)};
    }
    if (header.size() != kHeaderSize || !header.starts_with("BM") || NumberAt(header, kPixelsField) >= size) {
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
