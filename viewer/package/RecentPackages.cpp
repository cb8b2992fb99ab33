#include "package/RecentPackages.h"

#include "common/Paths.h"
#include "package/Paths.h"

namespace viewer {

namespace {

constexpr wchar_t kPackagesValue[] = L"RecentPackages";

} // namespace

RecentPackages::RecentPackages(std::wstring key) : m_key(std::move(key)) {
    Load();
}

void RecentPackages::Add(const std::wstring& package) {
    Forget(package);
    m_items.insert(m_items.begin(), package);
    if (m_items.size() > kMost) {
        m_items.resize(kMost);
    }
    Store();
}

void RecentPackages::Remove(const std::wstring& package) {
    Forget(package);
    Store();
}

void RecentPackages::Forget(const std::wstring& package) {
    std::erase_if(m_items, [&](const std::wstring& item) { return common::IsSamePath(item, package); });
}

void RecentPackages::Load() {
    DWORD bytes = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, m_key.c_str(), kPackagesValue, RRF_RT_REG_MULTI_SZ, nullptr, nullptr,
                     &bytes)) {
        return;
    }
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(HKEY_CURRENT_USER, m_key.c_str(), kPackagesValue, RRF_RT_REG_MULTI_SZ, nullptr,
                     text.data(), &bytes)) {
        return;
    }
    for (std::size_t start = 0; start < text.size() && m_items.size() < kMost;) {
        const std::wstring item = text.c_str() + start;
        if (item.empty()) {
            break;
        }
        m_items.push_back(item);
        start += item.size() + 1;
    }
}

void RecentPackages::Store() const {
    std::wstring text;
    for (const std::wstring& item : m_items) {
        text += item + L'\0';
    }
    text += L'\0';
    RegSetKeyValueW(HKEY_CURRENT_USER, m_key.c_str(), kPackagesValue, REG_MULTI_SZ, text.data(),
                    static_cast<DWORD>(text.size() * sizeof(wchar_t)));
}

} // namespace viewer
