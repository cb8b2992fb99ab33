// What administrators decide for the programs of the product, in the registry.
#pragma once

#include <windows.h>

#include <string>

namespace common {

/// Below HKEY_LOCAL_MACHINE, whose values come first, and HKEY_CURRENT_USER.
inline constexpr wchar_t kPoliciesKey[] = L"Software\\Policies\\MXOVDocView";

/// Where packages are unpacked: a text in which variables of the environment are expanded.
inline constexpr wchar_t kUnpackFolderPolicy[] = L"UnpackFolder";

/// Whether packages that hold programs are refused: the number 1.
inline constexpr wchar_t kRefuseProgramsPolicy[] = L"RefusePrograms";

/// The folder in which the viewer unpacks packages; empty where none is set.
[[nodiscard]] inline std::wstring UnpackFolderPolicy() {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        DWORD bytes = 0;
        if (RegGetValueW(root, kPoliciesKey, kUnpackFolderPolicy, RRF_RT_REG_SZ, nullptr, nullptr, &bytes)) {
            continue;
        }
        std::wstring folder(bytes / sizeof(wchar_t) + 1, L'\0');
        bytes = static_cast<DWORD>(folder.size() * sizeof(wchar_t));
        if (!RegGetValueW(root, kPoliciesKey, kUnpackFolderPolicy, RRF_RT_REG_SZ, nullptr, folder.data(),
                          &bytes)) {
            return folder.c_str(); // without what follows the end of the text
        }
    }
    return {};
}

/// Whether packages that hold programs are refused.
[[nodiscard]] inline bool IsRefusingPrograms() {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        DWORD value = 0;
        DWORD bytes = sizeof value;
        if (!RegGetValueW(root, kPoliciesKey, kRefuseProgramsPolicy, RRF_RT_REG_DWORD, nullptr, &value,
                          &bytes)) {
            return value != 0;
        }
    }
    return false;
}

} // namespace common
