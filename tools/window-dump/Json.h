// Text in UTF-8 and JSON, as programs that tests run print it.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

inline std::string Utf8(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

inline std::string Quoted(const std::wstring& text) {
    std::string quoted = "\"";
    for (const char character : Utf8(text)) {
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
