// A policy of an administrator while the object lives.
#pragma once

#include "common/Policies.h"

#include <string>

class PolicyValue {
public:
    PolicyValue(const wchar_t* name, const std::wstring& text, HKEY root = HKEY_CURRENT_USER)
        : PolicyValue(root, name, REG_EXPAND_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) {}
    PolicyValue(const wchar_t* name, DWORD number, HKEY root = HKEY_CURRENT_USER)
        : PolicyValue(root, name, REG_DWORD, &number, sizeof number) {}
    ~PolicyValue() { RegDeleteKeyValueW(m_root, common::kPoliciesKey, m_name); }
    PolicyValue(const PolicyValue&) = delete;
    PolicyValue& operator=(const PolicyValue&) = delete;

private:
    PolicyValue(HKEY root, const wchar_t* name, DWORD type, const void* data, DWORD bytes)
        : m_root(root), m_name(name) {
        RegSetKeyValueW(root, common::kPoliciesKey, name, type, data, bytes);
    }

    HKEY m_root;
    const wchar_t* m_name;
};
