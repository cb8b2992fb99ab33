#include "care/Information.h"

#include "common/Paths.h"

#include <package/PackageInformation.h>

#include <algorithm>

namespace care {

namespace {

bool HasPrefix(std::wstring_view text, std::wstring_view prefix) {
    return common::IsSamePath(text.substr(0, prefix.size()), prefix);
}

// The number of a section "PREFIX_n"; 0 for any other.
int NumberOf(std::wstring_view name, std::wstring_view prefix) {
    constexpr std::size_t kMostDigits = 9;
    if (!HasPrefix(name, prefix)) {
        return 0;
    }
    const std::wstring_view digits = name.substr(prefix.size());
    if (digits.empty() || digits.size() > kMostDigits ||
        digits.find_first_not_of(L"0123456789") != std::wstring_view::npos) {
        return 0;
    }
    return std::stoi(std::wstring(digits));
}

} // namespace

std::wstring ValueOf(const Section& section, std::wstring_view key) {
    const auto found = std::ranges::find_if(
        section.values, [key](const auto& pair) { return common::IsSamePath(pair.first, key); });
    return found != section.values.end() ? found->second : std::wstring();
}

std::wstring ValueOf(const Sections& sections, std::wstring_view section, std::wstring_view key) {
    const Section* found = FindSection(sections, section);
    return found != nullptr ? ValueOf(*found, key) : std::wstring();
}

const Section* FindSection(const Sections& sections, std::wstring_view name) {
    const auto found = std::ranges::find_if(
        sections, [name](const Section& section) { return common::IsSamePath(section.name, name); });
    return found != sections.end() ? &*found : nullptr;
}

bool IsAdditional(const Section& section) {
    return HasPrefix(section.name, inikey::kAdditionalPrefix);
}

bool IsCopy(const Section& section) {
    return ValueOf(section, inikey::kIsReferenced) == L"NO";
}

std::wstring NextSection(const Sections& sections, const std::wstring& prefix) {
    int last = 0;
    for (const Section& section : sections) {
        last = std::max(last, NumberOf(section.name, prefix + L"_"));
    }
    return prefix + L"_" + std::to_wstring(last + 1);
}

std::wstring LastName(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

bool NameLess::operator()(std::wstring_view left, std::wstring_view right) const noexcept {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
}

} // namespace care
