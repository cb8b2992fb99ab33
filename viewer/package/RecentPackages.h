// The packages that were opened last, newest first.
#pragma once

#include <string>
#include <vector>

namespace viewer {

class RecentPackages {
public:
    static constexpr std::size_t kMost = 9;

    /// Keeps the list below HKEY_CURRENT_USER in `key` and reads what is there.
    explicit RecentPackages(std::wstring key);

    /// Full paths, newest first, at most `kMost`.
    [[nodiscard]] const std::vector<std::wstring>& Items() const { return m_items; }

    /// Puts a package at the top, once, and stores the list.
    void Add(const std::wstring& package);

    /// Takes a package out and stores the list.
    void Remove(const std::wstring& package);

private:
    void Forget(const std::wstring& package);
    void Load();
    void Store() const;

    std::wstring m_key;
    std::vector<std::wstring> m_items;
};

} // namespace viewer
