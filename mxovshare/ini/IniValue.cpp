#include "ini/IniValue.h"

#include "ini/IniEncoding.h"

namespace mxovshare {
namespace {

constexpr std::u16string_view kMarker = u"\\esc:";
constexpr std::u16string_view kHexDigits = u"0123456789ABCDEF";

// Control characters but the tab, and the line breaks of Unicode.
constexpr bool IsControl(char16_t unit) {
    return (unit < 0x20 && unit != u'\t') || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 ||
           unit == 0x2029;
}

bool IsQuoted(std::u16string_view text) {
    return text.size() >= 2 && text.front() == text.back() && (text.front() == u'"' || text.front() == u'\'');
}

std::u16string_view UpToNul(std::u16string_view text) {
    return text.substr(0, text.find(u'\0'));
}

void AppendCode(std::u16string& text, char16_t unit) {
    text += u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += kHexDigits[unit >> shift & 0xF];
    }
}

// Length of the whole character at `at`: 2 for a surrogate pair.
std::size_t CharacterLength(std::u16string_view value, std::size_t at) {
    const std::u16string_view pair = value.substr(at, 2);
    return pair.size() == 2 && HasLoneSurrogate(pair.substr(0, 1)) && !HasLoneSurrogate(pair) ? 2 : 1;
}

void AppendEscaped(std::u16string& text, std::u16string_view character) {
    if (character == u"\\") {
        text += u"\\\\";
    } else if (character == u"\r") {
        text += u"\\r";
    } else if (character == u"\n") {
        text += u"\\n";
    } else if (NeedsEscape(character)) {
        AppendCode(text, character.front());
    } else {
        text += character;
    }
}

std::u16string Escaped(std::u16string_view value) {
    std::u16string text(kMarker);
    for (std::size_t at = 0, length = 0; at < value.size(); at += length) {
        length = CharacterLength(value, at);
        AppendEscaped(text, value.substr(at, length));
    }
    return text;
}

// The unit that "\uXXXX" at the start of `text` stands for; -1 for anything else.
int CodeAt(std::u16string_view text) {
    if (text.size() < 6) {
        return -1;
    }
    int code = 0;
    for (const char16_t digit : text.substr(2, 4)) {
        const std::size_t nibble = kHexDigits.find(digit);
        if (nibble == std::u16string_view::npos) {
            return -1;
        }
        code = code << 4 | static_cast<int>(nibble);
    }
    return code;
}

// Takes one unit, escaped or not, off the front of `text`; -1 for a malformed escape.
int TakeUnit(std::u16string_view& text) {
    int unit = text.front();
    std::size_t length = 1;
    if (unit == u'\\') {
        length = 2;
        const char16_t letter = text.size() > 1 ? text[1] : u'\0';
        unit = letter == u'\\' ? u'\\' : letter == u'r' ? u'\r' : letter == u'n' ? u'\n' : -1;
        if (letter == u'u') {
            unit = CodeAt(text);
            length = 6;
        }
    }
    if (unit >= 0) {
        text.remove_prefix(length);
    }
    return unit;
}

// Undoes Escaped. False unless `text` is exactly what Escaped makes of a value that has to be escaped.
bool Unescape(std::u16string_view text, std::u16string& value) {
    value.clear();
    for (std::u16string_view rest = text.substr(kMarker.size()); !rest.empty();) {
        const int unit = TakeUnit(rest);
        if (unit <= 0) {
            return false;
        }
        value += static_cast<char16_t>(unit);
    }
    return (NeedsEscape(value) || value.starts_with(kMarker)) && Escaped(value) == text;
}

} // namespace

std::u16string_view TrimBlanks(std::u16string_view text) {
    while (!text.empty() && IsIniBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsIniBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool NeedsEscape(std::u16string_view text) {
    for (const char16_t unit : text) {
        if (IsControl(unit)) {
            return true;
        }
    }
    return HasLoneSurrogate(text);
}

std::u16string StoredForm(std::u16string_view value) {
    value = UpToNul(value);
    std::u16string text =
        NeedsEscape(value) || value.starts_with(kMarker) ? Escaped(value) : std::u16string(value);
    if (IsQuoted(text) || TrimBlanks(text).size() != text.size()) {
        text = u'"' + text + u'"';
    }
    return text;
}

std::u16string PlainValue(std::u16string stored) {
    stored.resize(UpToNul(stored).size());
    if (IsQuoted(stored)) {
        stored.pop_back();
        stored.erase(0, 1);
    }
    std::u16string value;
    if (stored.starts_with(kMarker) && Unescape(stored, value)) {
        return value;
    }
    return stored;
}

} // namespace mxovshare
