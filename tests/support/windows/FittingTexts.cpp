#include "FittingTexts.h"

#include <commctrl.h>

namespace {

constexpr int kButtonEdge = 4; // pixels at 96 dots per inch on each side, as the others
constexpr int kHeaderEdge = 6;
constexpr int kBoxSide = 13;

int InPixels(HWND window, int length) {
    return MulDiv(length, static_cast<int>(GetDpiForWindow(window)), USER_DEFAULT_SCREEN_DPI);
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    CharLowerBuffW(name, lstrlenW(name));
    return name;
}

std::wstring TextOf(HWND window) {
    wchar_t text[2000] = L"";
    GetWindowTextW(window, text, ARRAYSIZE(text));
    return text;
}

// In the window's font; with a width the text is broken between words.
SIZE NeededBy(HWND window, const std::wstring& text, UINT format, int width = 0) {
    const HDC dc = GetDC(window);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HGDIOBJ old = SelectObject(dc, font ? font : GetStockObject(SYSTEM_FONT));
    RECT area = {0, 0, width, 0};
    DrawTextW(dc, text.c_str(), -1, &area, DT_CALCRECT | format);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    return {area.right, area.bottom};
}

bool Fits(SIZE needed, const RECT& area) {
    return needed.cx <= area.right && needed.cy <= area.bottom;
}

bool DoesButtonFit(HWND button, const RECT& area) {
    if ((GetWindowLongW(button, GWL_STYLE) & (BS_BITMAP | BS_ICON)) != 0) {
        return true; // its text is for screen readers
    }
    SIZE needed = NeededBy(button, TextOf(button), DT_SINGLELINE);
    const LONG kind = GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
    const bool isPushed = kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
    needed.cx += InPixels(button, isPushed ? 2 * kButtonEdge : kBoxSide + kButtonEdge);
    return Fits(needed, area);
}

bool DoesLabelFit(HWND label, const RECT& area) {
    const LONG style = GetWindowLongW(label, GWL_STYLE);
    const bool isOneLine = (style & SS_TYPEMASK) == SS_LEFTNOWORDWRAP || (style & SS_ELLIPSISMASK) != 0;
    const UINT prefix = style & SS_NOPREFIX ? DT_NOPREFIX : 0U;
    return isOneLine ? Fits(NeededBy(label, TextOf(label), DT_SINGLELINE | prefix), area)
                     : Fits(NeededBy(label, TextOf(label), DT_WORDBREAK | prefix, area.right), area);
}

void AddCutHeaders(HWND header, std::vector<std::wstring>& cut) {
    for (int i = 0; i < Header_GetItemCount(header); ++i) {
        wchar_t text[100] = L"";
        HDITEMW item = {};
        item.mask = HDI_TEXT | HDI_WIDTH;
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        if (NeededBy(header, text, DT_SINGLELINE).cx + InPixels(header, 2 * kHeaderEdge) > item.cxy) {
            cut.emplace_back(text);
        }
    }
}

BOOL CALLBACK AddIfCut(HWND window, LPARAM data) {
    auto& cut = *reinterpret_cast<std::vector<std::wstring>*>(data);
    if (!(GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE)) {
        return TRUE;
    }
    RECT area = {};
    GetClientRect(window, &area);
    const std::wstring kind = ClassOf(window);
    if ((kind == L"button" && !DoesButtonFit(window, area)) ||
        (kind == L"static" && !DoesLabelFit(window, area))) {
        cut.push_back(TextOf(window));
    } else if (kind == L"sysheader32") {
        AddCutHeaders(window, cut);
    }
    return TRUE;
}

} // namespace

std::vector<std::wstring> CutControlTexts(HWND window) {
    std::vector<std::wstring> cut;
    EnumChildWindows(window, AddIfCut, reinterpret_cast<LPARAM>(&cut));
    return cut;
}

DrawnTexts::DrawnTexts() {
    s_current = this;
}

DrawnTexts::~DrawnTexts() {
    s_current = nullptr;
}

int WINAPI DrawnTexts::Draw(HDC dc, LPCWSTR text, int length, LPRECT area, UINT format) {
    const auto draw = s_current->m_hook.Real();
    if (!(format & DT_CALCRECT)) {
        const RECT place = {0, 0, area->right - area->left, area->bottom - area->top};
        RECT needed = {0, 0, place.right, 0};
        draw(dc, text, length, &needed, (format | DT_CALCRECT) & ~static_cast<UINT>(DT_END_ELLIPSIS));
        ++s_current->m_count;
        if (!Fits({needed.right, needed.bottom}, place)) {
            s_current->m_cut.emplace_back(text);
        }
    }
    return draw(dc, text, length, area, format);
}
