#include "control/ListColumns.h"

#include "control/ControlParts.h"
#include "control/DpiContext.h"

#include <algorithm>

#include <commctrl.h>

namespace viewer {

namespace {

constexpr wchar_t kLongestDate[] = L"2000-00-00 00:00:00";
constexpr wchar_t kUsualSize[] = L"999999 KB";
constexpr int kCellPadding = 12; // pixels that a list view adds to a text, at 96 dots per inch
constexpr int kLeastName = 60;   // at 96 dots per inch

int Dpi(HWND window) {
    return static_cast<int>(GetDpiForWindow(window));
}

int Scale(int length, HWND window) {
    return MulDiv(length, Dpi(window), USER_DEFAULT_SCREEN_DPI);
}

int TextWidth(HWND list, const wchar_t* text) {
    return static_cast<int>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text))) +
           Scale(kCellPadding, list);
}

// The width that shows the title of a column and a text.
int ColumnWidth(HWND list, int column, const wchar_t* text) {
    wchar_t title[64] = L"";
    LVCOLUMNW data = {};
    data.mask = LVCF_TEXT;
    data.pszText = title;
    data.cchTextMax = ARRAYSIZE(title);
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&data));
    return std::max(TextWidth(list, title), TextWidth(list, text));
}

std::wstring ValueName(int index) {
    return L"ColumnWidths" + std::to_wstring(part::kFirstList + index);
}

} // namespace

void ListColumns::Apply(HWND dialog) {
    for (int index = 0; index < kListCount; ++index) {
        const HWND list = List(dialog, index);
        Widths widths = {};
        if (!Load(list, index, widths)) {
            widths = Fitting(list);
        }
        for (int column = 0; column < kColumnCount; ++column) {
            SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                         widths[static_cast<std::size_t>(column)]);
        }
        m_applied[static_cast<std::size_t>(index)] = Read(list);
    }
}

void ListColumns::Store(HWND dialog) const {
    for (int index = 0; index < kListCount; ++index) {
        const HWND list = List(dialog, index);
        Widths widths = Read(list);
        if (!list || widths == m_applied[static_cast<std::size_t>(index)]) {
            continue;
        }
        for (int& width : widths) {
            width = MulDiv(width, USER_DEFAULT_SCREEN_DPI, Dpi(list));
        }
        RegSetKeyValueW(HKEY_CURRENT_USER, m_settingsKey.c_str(), ValueName(index).c_str(), REG_BINARY,
                        widths.data(), sizeof widths);
    }
}

HWND ListColumns::List(HWND dialog, int index) {
    return GetDlgItem(dialog, part::kFirstList + index);
}

ListColumns::Widths ListColumns::Read(HWND list) {
    Widths widths = {};
    for (int column = 0; column < kColumnCount; ++column) {
        widths[static_cast<std::size_t>(column)] =
            static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    }
    return widths;
}

// The name column receives the rest of the width, less a vertical scroll bar.
ListColumns::Widths ListColumns::Fitting(HWND list) {
    const DpiContext ofControl(list);
    RECT area = {};
    GetWindowRect(list, &area);
    const bool hasBorder = (GetWindowLongW(list, GWL_STYLE) & WS_BORDER) != 0;
    const int inside = static_cast<int>(area.right - area.left) -
                       (hasBorder ? 2 * GetSystemMetrics(SM_CXEDGE) : 0) - GetSystemMetrics(SM_CXVSCROLL);
    const int size = ColumnWidth(list, 1, kUsualSize);
    const int date = ColumnWidth(list, 2, kLongestDate);
    return {std::max(inside - size - date, Scale(kLeastName, list)), size, date};
}

// The widths of an earlier run, which are kept for 96 dots per inch.
bool ListColumns::Load(HWND list, int index, Widths& widths) const {
    DWORD bytes = sizeof widths;
    if (RegGetValueW(HKEY_CURRENT_USER, m_settingsKey.c_str(), ValueName(index).c_str(), RRF_RT_REG_BINARY,
                     nullptr, widths.data(), &bytes) ||
        bytes != sizeof widths) {
        return false;
    }
    for (int& width : widths) {
        width = Scale(width, list);
    }
    return std::ranges::all_of(widths, [](int width) { return width >= 0 && width < 10000; });
}

} // namespace viewer
