#include "ShownRows.h"

#include <commctrl.h>

#include <ostream>

namespace {

int ItemImage(HWND list, int item) {
    LVITEMW request = {};
    request.mask = LVIF_IMAGE;
    request.iItem = item;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&request));
    return request.iImage;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const ShownRow& row) {
    const std::wstring text = row.name + L" | " + row.size + L" | " + row.date;
    for (const wchar_t c : text) {
        out << (c < 0x7f ? static_cast<char>(c) : '?');
    }
    return out << " | image " << row.image;
}

std::wstring ListText(HWND list, int row, int column) {
    wchar_t text[1024] = L"";
    LVITEMW request = {};
    request.iSubItem = column;
    request.pszText = text;
    request.cchTextMax = ARRAYSIZE(text);
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&request));
    return text;
}

std::vector<ShownRow> ShownRows(HWND list) {
    std::vector<ShownRow> rows;
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    rows.reserve(static_cast<size_t>(count));
    for (int item = 0; item < count; ++item) {
        rows.push_back({ListText(list, item, 0), ListText(list, item, 1), ListText(list, item, 2),
                        ItemImage(list, item)});
    }
    return rows;
}
