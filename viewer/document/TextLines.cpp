#include "document/TextLines.h"

#include "common/Utf8.h"

#include <algorithm>

namespace viewer {

namespace {

constexpr std::size_t kTabWidth = 8;
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::wstring FromCodePage(std::string_view bytes, UINT codePage, DWORD flags) {
    const int size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), units);
    return text;
}

// The length of a character in UTF-8 by its first byte.
std::size_t Utf8Length(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

// The bytes without a character at the end that is cut.
std::string_view WholeUtf8(std::string_view bytes) {
    for (std::size_t length = 1; length <= std::min<std::size_t>(3, bytes.size()); ++length) {
        const std::size_t begin = bytes.size() - length;
        if ((bytes[begin] & 0xC0) != 0x80) {
            return Utf8Length(bytes[begin]) > length ? bytes.substr(0, begin) : bytes;
        }
    }
    return bytes;
}

std::wstring ExpandTabs(std::wstring_view line) {
    std::wstring text;
    for (const wchar_t character : line) {
        if (character == L'\t') {
            text.append(kTabWidth - text.size() % kTabWidth, L' ');
        } else {
            text += character < L' ' ? L' ' : character;
        }
    }
    return text;
}

bool IsDigit(const std::wstring& text, std::size_t index) {
    return index < text.size() && text[index] >= L'0' && text[index] <= L'9';
}

std::size_t EndOfDigits(const std::wstring& text, std::size_t index) {
    while (IsDigit(text, index)) {
        ++index;
    }
    return index;
}

// A word of G code that begins here, such as "T12"; nothing to be tinted has the length 0.
TintedPart WordAt(const std::wstring& text, std::size_t index) {
    const wchar_t letter = text[index] & ~0x20; // upper case of a letter
    if ((letter != L'N' && letter != L'T') || !IsDigit(text, index + 1)) {
        return {index, index, Tint::Number};
    }
    return {index, EndOfDigits(text, index + 1), letter == L'T' ? Tint::Tool : Tint::Number};
}

void TintGCode(TextLine& line) {
    const std::wstring& text = line.text;
    for (std::size_t i = 0; i < text.size();) {
        TintedPart part = {i, i, Tint::Comment};
        if (text[i] == L';') {
            part.end = text.size();
        } else if (text[i] == L'(') {
            part.end = std::min(text.find(L')', i), text.size() - 1) + 1;
        } else {
            part = WordAt(text, i);
        }
        if (part.end > part.begin) {
            line.tints.push_back(part);
        }
        i = std::max(part.end, i + 1);
    }
}

// Comments of markup may run over several lines.
void TintMarkup(std::vector<TextLine>& lines) {
    constexpr std::wstring_view kOpen = L"<!--";
    constexpr std::wstring_view kClose = L"-->";
    bool inside = false;
    for (TextLine& line : lines) {
        for (std::size_t i = 0; i < line.text.size();) {
            const std::size_t begin = inside ? i : line.text.find(kOpen, i);
            if (begin == std::wstring::npos) {
                break;
            }
            const std::size_t close = line.text.find(kClose, begin);
            inside = close == std::wstring::npos;
            i = inside ? line.text.size() : close + kClose.size();
            line.tints.push_back({begin, i, Tint::Comment});
        }
    }
}

} // namespace

std::wstring DecodeText(std::string_view bytes) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf16Mark)) {
        std::wstring text((bytes.size() - 2) / 2, L'\0');
        std::ranges::copy(bytes.substr(2, text.size() * 2), reinterpret_cast<char*>(text.data()));
        return text;
    }
    if (bytes.starts_with(kUtf8Mark)) {
        return common::FromUtf8(bytes.substr(kUtf8Mark.size()));
    }
    std::wstring text = FromCodePage(WholeUtf8(bytes), CP_UTF8, MB_ERR_INVALID_CHARS);
    return text.empty() ? FromCodePage(bytes, CP_ACP, 0) : text;
}

bool IsBinary(std::string_view bytes) {
    return !bytes.starts_with(kUtf16Mark) && bytes.find('\0') != std::string_view::npos;
}

std::vector<TextLine> MakeLines(std::wstring_view text, TextKind kind) {
    std::vector<TextLine> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", begin), text.size());
        lines.push_back(
            {.text = ExpandTabs(text.substr(begin, end - begin)), .tints = {}, .number = lines.size() + 1});
        begin = end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1);
    }
    if (kind == TextKind::GCode) {
        std::ranges::for_each(lines, TintGCode);
    } else if (kind == TextKind::Markup) {
        TintMarkup(lines);
    }
    return lines;
}

} // namespace viewer
