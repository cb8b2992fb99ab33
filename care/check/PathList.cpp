#include "care/check/PathList.h"

#include "care/Information.h"

#include <algorithm>
#include <numeric>

namespace care {

std::wstring_view PathList::operator[](std::size_t number) const {
    const std::size_t begin = number == 0 ? 0 : m_ends[number - 1];
    return std::wstring_view(m_text).substr(begin, m_ends[number] - begin);
}

std::map<std::size_t, std::size_t> PathList::Repeated() const {
    std::vector<std::size_t> byPath(m_ends.size());
    std::iota(byPath.begin(), byPath.end(), std::size_t{0});
    const auto pathOf = [this](std::size_t number) { return (*this)[number]; };
    std::ranges::stable_sort(byPath, NameLess(), pathOf);
    std::map<std::size_t, std::size_t> repeated;
    for (std::size_t at = 1, first = 0; at < byPath.size(); ++at) {
        if (CompareNames(pathOf(byPath[first]), pathOf(byPath[at])) != 0) {
            first = at;
        } else if (!pathOf(byPath[at]).empty()) {
            repeated.emplace(byPath[at], byPath[first]);
        }
    }
    return repeated;
}

} // namespace care
