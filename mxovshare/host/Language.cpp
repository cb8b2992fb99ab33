#include "mxovlanguage.h"

#include "common/Language.h"

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

} // namespace

bool UseLanguage(const std::wstring& name) noexcept {
    try {
        static common::UniqueModule current;
        std::wstring newName = name;
        common::UniqueModule texts = common::LoadLanguageModule(OwnModule(), name, kModuleName);
        OVApplication::hMXOVResInstance = texts ? texts.get() : OwnModule();
        OVApplication::mxLanguageName.swap(newName);
        current.swap(texts);
        return current || name == kInside;
    } catch (...) {
        return false;
    }
}

} // namespace mxovshare
