#include "mxovlanguage.h"

#include "common/LongPath.h"

#include <memory>
#include <type_traits>

namespace mxovshare {
namespace {

constexpr const wchar_t* kInside = L"English"; // its texts are inside this library
constexpr const wchar_t* kModuleName = L"mxovtexts.dll";

struct ModuleDeleter {
    void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};
using ResourceModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleDeleter>;

HINSTANCE OwnModule() {
    HINSTANCE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OVApplication::hMXOVResInstance), &module);
    return module;
}

std::wstring OwnFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(OwnModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path.substr(0, path.find_last_of(L'\\') + 1);
        }
        path.resize(path.size() * 2);
    }
}

// Folders are named as those of the help files are.
std::wstring LanguageFolder(const std::wstring& name) {
    return name == L"Portuguese" ? L"portuguese-brazilian" : name;
}

// Empty when there is no such module. A name that is no plain folder name has none.
ResourceModule LoadTexts(const std::wstring& name) {
    if (name.empty() || name.find_first_of(L"\\/:.") != std::wstring::npos) {
        return {};
    }
    const std::wstring path = OwnFolder() + L"lang\\" + LanguageFolder(name) + L"\\" + kModuleName;
    constexpr DWORD kOnlyResources = LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
    return ResourceModule(LoadLibraryExW(common::LongPath(path).c_str(), nullptr, kOnlyResources));
}

} // namespace

bool UseLanguage(const std::wstring& name) noexcept {
    try {
        static ResourceModule current;
        std::wstring newName = name;
        ResourceModule texts = LoadTexts(name);
        OVApplication::hMXOVResInstance = texts ? texts.get() : OwnModule();
        OVApplication::mxLanguageName.swap(newName);
        current.swap(texts);
        return current || name == kInside;
    } catch (...) {
        return false;
    }
}

} // namespace mxovshare
