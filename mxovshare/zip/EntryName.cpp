#include "EntryName.h"

#include "text/CaseFold.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <string>

namespace mxovshare {

namespace {

constexpr std::string_view kForbidden = "<>|\"?*";
constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
constexpr std::string_view kNumberedDevices[] = {"COM", "LPT"};
// The digits, and the three superscript ones that the system takes for digits here.
constexpr std::string_view kDeviceNumbers[] = {"0", "1", "2", "3",        "4",        "5",       "6",
                                               "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};

// An extension does not keep a device name from naming the device, nor do blanks in front of the extension.
bool IsDevice(std::string_view part) {
    constexpr std::size_t kShortest = 3;
    if (part.size() < kShortest) {
        return false;
    }
    std::string base = FoldCase(part.substr(0, part.find('.')));
    base.erase(base.find_last_not_of(' ') + 1);
    if (std::ranges::find(kDevices, base) != std::end(kDevices)) {
        return true;
    }
    const auto prefix = std::string_view(base).substr(0, 3);
    return std::ranges::find(kNumberedDevices, prefix) != std::end(kNumberedDevices) &&
           std::ranges::find(kDeviceNumbers, std::string_view(base).substr(3)) != std::end(kDeviceNumbers);
}

bool IsReserved(std::string_view part) {
    return part.size() >= kTemporarySuffix.size() &&
           FoldCase(part.substr(part.size() - kTemporarySuffix.size())) == FoldCase(kTemporarySuffix);
}

// Whether a byte is a character that any name may hold.
bool IsPlain(char byte) {
    static constexpr auto kPlain = [] {
        std::array<bool, 0x80> plain = {};
        for (std::size_t code = 0x20; code < 0x7F; ++code) {
            plain[code] = kForbidden.find(static_cast<char>(code)) == std::string_view::npos && code != ':';
        }
        return plain;
    }();
    const auto code = static_cast<unsigned char>(byte);
    return code < kPlain.size() && kPlain[code];
}

bool IsControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

// Embeddings, overrides and isolates can show an extension at another place than its own.
bool IsDirectionControl(char32_t code) {
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string_view CodeFault(std::string_view part) {
    while (!part.empty()) {
        const Utf8Character next = DecodeUtf8(part);
        if (IsControl(next.code)) {
            return "the name holds a control character";
        }
        if (IsDirectionControl(next.code)) {
            return "the name holds a character that changes the direction of text";
        }
        part.remove_prefix(next.length);
    }
    return {};
}

std::string_view CharacterFault(std::string_view part) {
    if (const std::string_view fault = CodeFault(part); !fault.empty()) {
        return fault;
    }
    if (part.find_first_of(kForbidden) != std::string_view::npos) {
        return "the name holds one of the characters < > | \" ? *";
    }
    if (part.find(':') != std::string_view::npos) {
        return "the name holds \":\", a drive or an alternate stream";
    }
    return {};
}

// Whether a text has more UTF-16 units; it has no more of them than bytes.
bool IsLonger(std::string_view text, std::size_t units) {
    return text.size() > units && Utf16Length(text) > units;
}

std::string_view PartFault(std::string_view part) {
    if (part.empty()) {
        return "the name has an empty part";
    }
    if (part == "." || part == "..") {
        return "the name leads through \".\" or \"..\"";
    }
    if (part.back() == '.' || part.back() == ' ') {
        return "a part of the name ends in a dot or a blank";
    }
    if (!std::ranges::all_of(part, IsPlain)) {
        if (const std::string_view fault = CharacterFault(part); !fault.empty()) {
            return fault;
        }
    }
    if (IsLonger(part, kLongestNamePart)) {
        return "a part of the name is longer than 255 characters";
    }
    if (IsDevice(part)) {
        return "the name is that of a device";
    }
    if (IsReserved(part)) {
        return "the name is reserved for temporary files";
    }
    return {};
}

bool HasDrive(std::string_view name) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return name.size() >= 2 && name[1] == ':' && isLetter(name[0]);
}

} // namespace

std::string_view EntryNameFault(std::string_view name) {
    if (name.empty()) {
        return "the name is empty";
    }
    if (!IsUtf8(name)) {
        return "the name is not valid UTF-8";
    }
    if (name.front() == '/' || name.front() == '\\') {
        return "the name is an absolute path";
    }
    if (HasDrive(name)) {
        return "the name begins with a drive letter";
    }
    if (name.find('\\') != std::string_view::npos) {
        return "the name holds \"\\\" where only \"/\" separates";
    }
    if (IsLonger(name, kLongestName)) {
        return "the name is longer than 32000 characters";
    }
    if (name.size() > kLongestStoredName) {
        return "the name is longer than 65534 bytes";
    }
    if (std::ranges::count(name, '/') > kDeepestName) {
        return "the name leads through more than 250 folders";
    }
    while (true) {
        const std::size_t end = name.find('/');
        const std::string_view fault = PartFault(name.substr(0, end));
        if (!fault.empty() || end == std::string_view::npos) {
            return fault;
        }
        name.remove_prefix(end + 1);
    }
}

} // namespace mxovshare
