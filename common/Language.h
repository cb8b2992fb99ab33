// Folders of texts and help files in other languages.
#pragma once

#include <string>

namespace common {

/// Name of the folder for a language, by the name that the host application has for it.
[[nodiscard]] inline std::wstring LanguageFolder(const std::wstring& language) {
    return language == L"Portuguese" ? L"portuguese-brazilian" : language;
}

} // namespace common
