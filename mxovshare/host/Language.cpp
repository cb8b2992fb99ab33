#include "mxovlanguage.h"

#include "common/Handles.h"
#include "common/Language.h"
#include "common/LongPath.h"
#include "common/Paths.h"

#include <string>

namespace mxovshare {
namespace {

constexpr const wchar_t* kInside = L"English"; // its texts are inside this library
constexpr const wchar_t* kModuleName = L"mxovtexts.dll";

HINSTANCE OwnModule() {
    HINSTANCE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OVApplication::hMXOVResInstance), &module);
    return module;
}

// Empty when there is no such module. A name that is no plain folder name has none.
common::UniqueModule LoadTexts(const std::wstring& name) {
    if (name.empty() || name.find_first_of(L"\\/:.") != std::wstring::npos) {
        return {};
    }
    const std::wstring path =
        common::ModuleFolder(OwnModule()) + L"\\lang\\" + common::LanguageFolder(name) + L"\\" + kModuleName;
    constexpr DWORD kOnlyResources = LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
    return common::UniqueModule(LoadLibraryExW(common::LongPath(path).c_str(), nullptr, kOnlyResources));
}

} // namespace

bool UseLanguage(const std::wstring& name) noexcept {
    try {
        static common::UniqueModule current;
        std::wstring newName = name;
        common::UniqueModule texts = LoadTexts(name);
        OVApplication::hMXOVResInstance = texts ? texts.get() : OwnModule();
        OVApplication::mxLanguageName.swap(newName);
        current.swap(texts);
        return current || name == kInside;
    } catch (...) {
        return false;
    }
}

} // namespace mxovshare
