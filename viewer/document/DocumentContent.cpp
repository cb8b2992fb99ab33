#include "document/DocumentContent.h"

#include "common/LongPath.h"
#include "document/PictureFile.h"
#include "handler/PreviewHandler.h"
#include "package/Paths.h"

#include <algorithm>
#include <array>

namespace viewer {

namespace {

constexpr std::uint64_t kMostText = 1 << 20;   // bytes
constexpr std::uint64_t kMostWhole = 32 << 20; // bytes

std::wstring Extension(const std::wstring& path) {
    const std::wstring name = FileName(path);
    std::wstring extension = name.substr(std::min(name.rfind(L'.'), name.size()));
    CharLowerBuffW(extension.data(), static_cast<DWORD>(extension.size()));
    return extension;
}

template <std::size_t Count>
bool IsOneOf(const std::wstring& word, const std::array<const wchar_t*, Count>& words) {
    return std::ranges::find(words, word) != words.end();
}

bool IsText(const DocumentDetails& details, const std::wstring& extension) {
    constexpr std::array<const wchar_t*, 5> kTexts = {L".nc", L".tap", L".xml", L".txt", L".csv"};
    return details.isProgram || IsOneOf(extension, kTexts);
}

bool IsPicture(const std::wstring& extension) {
    constexpr std::array<const wchar_t*, 7> kPictures = {L".bmp", L".png", L".jpg", L".jpeg",
                                                         L".gif", L".tif", L".tiff"};
    return IsOneOf(extension, kPictures);
}

TextKind KindOfText(const DocumentDetails& details, const std::wstring& extension) {
    if (extension == L".xml") {
        return TextKind::Markup;
    }
    const bool isProgram = details.isProgram || extension == L".nc" || extension == L".tap";
    return isProgram ? TextKind::GCode : TextKind::Plain;
}

// The beginning of a file; empty when it cannot be read.
std::string ReadBeginning(const std::wstring& path, std::uint64_t most) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const common::UniqueHandle file =
        common::OwnFile(CreateFileW(common::LongPath(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size = {};
    if (!file || !GetFileSizeEx(file.get(), &size)) {
        return {};
    }
    std::string bytes(std::min(static_cast<std::uint64_t>(size.QuadPart), most), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        read = 0;
    }
    bytes.resize(read);
    return bytes;
}

void ReadText(DocumentContent& content, TextKind kind) {
    const std::string bytes = ReadBeginning(content.details.path, kMostText);
    if (IsBinary(bytes) || (bytes.empty() && content.details.size > 0)) {
        return;
    }
    content.kind = DocumentContent::Kind::Text;
    content.isCut = content.details.size > bytes.size();
    content.lines = MakeLines(DecodeText(bytes), kind);
    if (content.isCut && !content.lines.empty()) {
        content.lines.pop_back(); // it may be cut in the middle
    }
}

void ReadPicture(DocumentContent& content) {
    if (content.details.size <= kMostWhole) {
        content.picture = DecodePicture(ReadBeginning(content.details.path, kMostWhole));
    }
    if (content.picture) {
        content.kind = DocumentContent::Kind::Picture;
    }
}

bool HasMarkOfTheWeb(const std::wstring& path) {
    const std::wstring mark = common::LongPath(path) + L":Zone.Identifier";
    return GetFileAttributesW(mark.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A handler runs code on whatever the document holds, so documents from outside wait for the user, as they do
// in the system's folder windows.
void ReadForHandler(DocumentContent& content, const std::wstring& extension) {
    const DocumentDetails& details = content.details;
    const std::optional<CLSID> handler =
        details.size <= kMostWhole ? FindPreviewHandler(extension) : std::nullopt;
    content.isFromOutside = handler && HasMarkOfTheWeb(details.path);
    if (!handler || content.isFromOutside) {
        return;
    }
    content.preview = {*handler, details.path, ReadBeginning(details.path, kMostWhole)};
    if (content.preview.bytes.size() == details.size) {
        content.kind = DocumentContent::Kind::Previewed;
    }
}

} // namespace

DocumentContent ReadContent(const DocumentDetails& details) {
    DocumentContent content;
    content.details = details;
    const std::wstring extension = Extension(details.path);
    if (!details.exists) {
        content.kind = DocumentContent::Kind::Missing;
    } else if (IsText(details, extension)) {
        ReadText(content, KindOfText(details, extension));
    } else if (IsPicture(extension)) {
        ReadPicture(content);
    } else {
        ReadForHandler(content, extension);
    }
    return content;
}

} // namespace viewer
