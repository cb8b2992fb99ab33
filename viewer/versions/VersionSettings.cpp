#include "versions/VersionSettings.h"

#include "common/Policies.h"

namespace viewer {

namespace {

constexpr wchar_t kKeep[] = L"KeepVersions";
constexpr wchar_t kVersions[] = L"VersionsOfEach";
constexpr wchar_t kMegabytes[] = L"VersionsMegabytes";
constexpr int kMegabyteBits = 20;

std::optional<DWORD> Number(const std::wstring& key, const wchar_t* name) {
    DWORD value = 0;
    DWORD bytes = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &bytes)) {
        return std::nullopt;
    }
    return value;
}

} // namespace

bool VersionSettings::AreKept() const {
    return common::KeepVersionsPolicy().value_or(Number(m_key, kKeep).value_or(1) != 0);
}

bool VersionSettings::AreDecided() {
    return common::KeepVersionsPolicy().has_value();
}

void VersionSettings::Keep(bool kept) const {
    const DWORD value = kept ? 1 : 0;
    RegSetKeyValueW(HKEY_CURRENT_USER, m_key.c_str(), kKeep, REG_DWORD, &value, sizeof value);
}

VersionLimits VersionSettings::Limits() const {
    VersionLimits limits;
    limits.versions = Number(m_key, kVersions).value_or(static_cast<DWORD>(limits.versions));
    if (const std::optional<DWORD> megabytes = Number(m_key, kMegabytes)) {
        limits.bytes = std::uint64_t{*megabytes} << kMegabyteBits;
    }
    return limits;
}

} // namespace viewer
