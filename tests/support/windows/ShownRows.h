// What a list view of this process shows.
#pragma once

#include <windows.h>

#include <iosfwd>
#include <string>
#include <vector>

/// One row of a list of documents.
struct ShownRow {
    std::wstring name;
    std::wstring size;
    std::wstring date;
    int image = -1;

    bool operator==(const ShownRow&) const = default;
};

/// Prints a row in a failed assertion.
std::ostream& operator<<(std::ostream& out, const ShownRow& row);

/// The text of a cell, to 1023 characters.
std::wstring ListText(HWND list, int row, int column);

/// All rows of a list of documents.
std::vector<ShownRow> ShownRows(HWND list);
