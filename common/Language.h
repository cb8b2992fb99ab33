// Folders of texts and help files in other languages.
#pragma once

#include "Handles.h"
#include "LongPath.h"
#include "Paths.h"

#include <string>

namespace common {

/// Name of the folder for a language, by the name that the host application has for it.
[[nodiscard]] inline std::wstring LanguageFolder(const std::wstring& language) {
    return language == L"Portuguese" ? L"portuguese-brazilian" : language;
}

/// Loads the resource-only module `file` of a language from the folder `lang\` beside `owner`, the program
/// for null. Empty when there is no such module; a name that is no plain folder name has none.
[[nodiscard]] inline UniqueModule LoadLanguageModule(HMODULE owner, const std::wstring& language,
                                                     const wchar_t* file) {
    if (language.empty() || language.find_first_of(L"\\/:.") != std::wstring::npos) {
        return {};
    }
    const std::wstring path = ModuleFolder(owner) + L"\\lang\\" + LanguageFolder(language) + L"\\" + file;
    constexpr DWORD kOnlyResources = LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
    return UniqueModule(LoadLibraryExW(LongPath(path).c_str(), nullptr, kOnlyResources));
}

} // namespace common
