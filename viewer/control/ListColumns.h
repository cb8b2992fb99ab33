// The column widths of the control's lists: fitting at first, later as the user left them.
#pragma once

#include <windows.h>

#include <array>
#include <string>

namespace viewer {

class ListColumns {
public:
    /// Remembers widths below HKEY_CURRENT_USER in `settingsKey`.
    explicit ListColumns(std::wstring settingsKey) : m_settingsKey(std::move(settingsKey)) {}

    /// Sets the widths of the lists in the control's dialog: to what the user set in an earlier run, else so
    /// that date and size fit and no list needs a horizontal scroll bar.
    void Apply(HWND dialog);

    /// Remembers the widths of lists that the user changed since `Apply`.
    void Store(HWND dialog) const;

private:
    static constexpr int kListCount = 4;
    static constexpr int kColumnCount = 3;
    using Widths = std::array<int, kColumnCount>; // pixels

    static HWND List(HWND dialog, int index);
    static Widths Read(HWND list);
    static Widths Fitting(HWND list);
    [[nodiscard]] bool Load(HWND list, int index, Widths& widths) const;

    std::wstring m_settingsKey;
    std::array<Widths, kListCount> m_applied = {};
};

} // namespace viewer
