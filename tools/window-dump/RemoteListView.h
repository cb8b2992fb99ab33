// Reads the list view of another process, by messages alone.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct ListColumn {
    std::wstring title;
    int width = 0; ///< pixels
};

struct ListRow {
    std::vector<std::wstring> texts; ///< one per column
    int image = -1;
    bool selected = false;
};

struct ListContent {
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows;
    unsigned long extendedStyle = 0;
    int rowHeight = 0; ///< pixels
};

/// Sends a message and waits at most a few seconds. Throws std::runtime_error when the window does not
/// answer.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// Everything that a list view in report view shows. Throws std::runtime_error when it cannot be read.
[[nodiscard]] ListContent ReadListView(HWND list);
