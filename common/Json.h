// Values in JSON, as programs print them.
#pragma once

#include "common/Utf8.h"

#include <cstdio>
#include <string>

namespace common {

/// A string in quotes, in UTF-8.
inline std::string JsonString(const std::wstring& text) {
    std::string quoted = "\"";
    for (const char character : ToUtf8(text)) {
        if (character == '"' || character == '\\') {
            quoted += '\\';
        }
        if (static_cast<unsigned char>(character) < ' ') {
            char escape[8] = "";
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character));
            quoted += escape;
        } else {
            quoted += character;
        }
    }
    return quoted + '"';
}

/// An array; `format` turns an item into JSON.
template <class Items, class Format>
std::string JsonArray(const Items& items, Format format) {
    std::string text = "[";
    for (const auto& item : items) {
        text += (text.size() > 1 ? "," : "") + format(item);
    }
    return text + "]";
}

inline const char* JsonTruth(bool value) {
    return value ? "true" : "false";
}

} // namespace common
