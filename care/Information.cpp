#include "care/Information.h"

#include "common/NumberedSection.h"
#include "common/Paths.h"

#include <package/PackageInformation.h>

#include <algorithm>
#include <cstdint>
#include <limits>

using namespace docview;

namespace care {

namespace {

// The number of a section "PREFIX_n"; 0 for any other and for one that an int does not hold.
int NumberOf(std::wstring_view name, std::wstring_view prefix) {
    if (!HasPrefix(name, prefix)) {
        return 0;
    }
    std::int64_t number = 0;
    for (const wchar_t digit : name.substr(prefix.size())) {
        number = digit < L'0' || digit > L'9' ? std::numeric_limits<int>::max() + std::int64_t{1}
                                              : number * 10 + (digit - L'0');
        if (number > std::numeric_limits<int>::max()) {
            return 0;
        }
    }
    return static_cast<int>(number);
}

} // namespace

bool HasPrefix(std::wstring_view text, std::wstring_view prefix) {
    return common::IsSamePath(text.substr(0, prefix.size()), prefix);
}

std::wstring ValueOf(const Section& section, std::wstring_view key) {
    const auto found = std::ranges::find_if(
        section.values, [key](const auto& pair) { return common::IsSamePath(pair.first, key); });
    return found != section.values.end() ? found->second : std::wstring();
}

std::vector<const std::pair<std::wstring, std::wstring>*> ValuesByKey(const Section& section) {
    std::vector<const std::pair<std::wstring, std::wstring>*> values(section.values.size());
    std::ranges::transform(section.values, values.begin(), [](const auto& pair) { return &pair; });
    std::ranges::sort(values, NameLess(),
                      [](const auto* pair) -> const std::wstring& { return pair->first; });
    return values;
}

bool IsAdditional(const Section& section) {
    return HasPrefix(section.name, inikey::kAdditionalPrefix);
}

bool IsCopy(const Section& section) {
    return ValueOf(section, inikey::kIsReferenced) == L"NO";
}

std::wstring NextSection(const Sections& sections, const std::wstring& prefix) {
    int last = 0;
    for (const std::wstring& name : sections.SectionNames(prefix)) {
        last = std::max(last, NumberOf(name, prefix + L"_"));
    }
    return common::NextSection(prefix, last, [&] { return sections.SectionNames(prefix); });
}

std::wstring LastName(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

// The common prefix is skipped first: hostile names share long ones.
int CompareNames(std::wstring_view left, std::wstring_view right) noexcept {
    const auto [differing, other] = std::ranges::mismatch(left, right);
    left.remove_prefix(static_cast<std::size_t>(differing - left.begin()));
    right.remove_prefix(static_cast<std::size_t>(other - right.begin()));
    return common::ComparePaths(left, right);
}

} // namespace care
