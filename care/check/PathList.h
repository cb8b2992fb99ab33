// Many paths in little memory.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace care {

/// Paths by number, in one text: one by one they take several times the memory of the information file.
class PathList {
public:
    /// `pathOf` is called twice for each number below `count`.
    template <typename PathOf>
    PathList(std::size_t count, PathOf pathOf) {
        std::size_t length = 0;
        for (std::size_t number = 0; number < count; ++number) {
            length += pathOf(number).size();
        }
        m_text.reserve(length);
        m_ends.reserve(count);
        for (std::size_t number = 0; number < count; ++number) {
            m_text += pathOf(number);
            m_ends.push_back(m_text.size());
        }
    }

    std::wstring_view operator[](std::size_t number) const;

    /// Numbers of the paths that are not empty and that an earlier number has too, without regard to case,
    /// with the first such number.
    std::map<std::size_t, std::size_t> Repeated() const;

private:
    std::wstring m_text;
    std::vector<std::size_t> m_ends;
};

} // namespace care
