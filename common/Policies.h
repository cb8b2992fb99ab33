// What administrators decide for the programs of the product, in the registry.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace common {

/// Below HKEY_LOCAL_MACHINE, whose values come first, and HKEY_CURRENT_USER.
inline constexpr wchar_t kPoliciesKey[] = L"Software\\Policies\\MXOVDocView";

/// Where packages are unpacked: a text in which variables of the environment are expanded.
inline constexpr wchar_t kUnpackFolderPolicy[] = L"UnpackFolder";

/// Whether packages that hold programs are refused: the number 1.
inline constexpr wchar_t kRefuseProgramsPolicy[] = L"RefusePrograms";

/// Whether the viewer keeps earlier versions of packages: the number 0 or 1.
inline constexpr wchar_t kKeepVersionsPolicy[] = L"KeepVersions";

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

/// The number of a policy; nothing where it is not set.
[[nodiscard]] inline std::optional<DWORD> NumberPolicy(const wchar_t* name) {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        DWORD value = 0;
        DWORD bytes = sizeof value;
        if (!RegGetValueW(root, kPoliciesKey, name, RRF_RT_REG_DWORD, nullptr, &value, &bytes)) {
            return value;
        }
    }
    return std::nullopt;
}

/// Whether packages that hold programs are refused.
[[nodiscard]] inline bool IsRefusingPrograms() {
    return NumberPolicy(kRefuseProgramsPolicy).value_or(0) != 0;
}

/// Whether the viewer keeps earlier versions of packages; nothing where the user decides.
[[nodiscard]] inline std::optional<bool> KeepVersionsPolicy() {
    const std::optional<DWORD> value = NumberPolicy(kKeepVersionsPolicy);
    return value ? std::optional(*value != 0) : std::nullopt;
}

} // namespace common
