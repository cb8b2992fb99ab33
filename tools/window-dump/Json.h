// Values in JSON, as the program prints them.
#pragma once

#include "common/Utf8.h"

#include <cstdio>
#include <string>

inline std::string Quoted(const std::wstring& text) {
    std::string quoted = "\"";
    for (const char character : common::ToUtf8(text)) {
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

template <class Items, class Format>
std::string Array(const Items& items, Format format) {
    std::string text = "[";
    for (const auto& item : items) {
        text += (text.size() > 1 ? "," : "") + format(item);
    }
    return text + "]";
}

inline const char* Truth(bool value) {
    return value ? "true" : "false";
}
