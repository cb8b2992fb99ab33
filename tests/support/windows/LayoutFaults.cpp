#include "LayoutFaults.h"

#include <algorithm>
#include <map>

namespace {

using Faults = std::vector<std::wstring>;

std::wstring KindOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

bool Is(HWND window, const wchar_t* kind) {
    return lstrcmpiW(KindOf(window).c_str(), kind) == 0;
}

LONG StyleOf(HWND window) {
    return GetWindowLongW(window, GWL_STYLE);
}

bool IsGroupBox(HWND window) {
    return Is(window, L"Button") && (StyleOf(window) & BS_TYPEMASK) == BS_GROUPBOX;
}

struct Part {
    explicit Part(HWND handle) : window(handle) { GetWindowRect(handle, &area); }

    [[nodiscard]] std::wstring Name() const {
        wchar_t text[100] = L"";
        GetWindowTextW(window, text, ARRAYSIZE(text));
        return L"\"" + std::wstring(text) + L"\" (" + KindOf(window) + L" " +
               std::to_wstring(GetDlgCtrlID(window)) + L")";
    }

    HWND window;
    RECT area = {}; // on the screen
};

// In the order of the keyboard.
std::vector<Part> PartsOf(HWND parent) {
    std::vector<Part> parts;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const Part part(child);
        if ((StyleOf(child) & WS_VISIBLE) != 0 && !IsRectEmpty(&part.area)) {
            parts.push_back(part);
        }
    }
    return parts;
}

bool Holds(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

RECT ClientOnScreen(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

bool MayLieOver(const Part& one, const Part& other) {
    return (IsGroupBox(one.window) && Holds(one.area, other.area)) ||
           (IsGroupBox(other.window) && Holds(other.area, one.area));
}

// By more than a pixel: the places and sizes of a template are rounded one by one.
bool Overlap(const RECT& one, const RECT& other) {
    RECT common = {};
    return IntersectRect(&common, &one, &other) && common.right - common.left > 1 &&
           common.bottom - common.top > 1;
}

void AddPlaces(HWND parent, const std::vector<Part>& parts, Faults& faults) {
    const RECT client = ClientOnScreen(parent);
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        if (!Holds(client, part->area)) {
            faults.push_back(part->Name() + L" reaches beyond its parent");
        }
        for (auto other = std::next(part); other != parts.end(); ++other) {
            if (Overlap(part->area, other->area) && !MayLieOver(*part, *other)) {
                faults.push_back(part->Name() + L" meets " + other->Name());
            }
        }
    }
}

// Lower, or at the right in the same row.
bool IsAfter(const RECT& next, const RECT& before) {
    const bool isSameRow = next.top < before.bottom && before.top < next.bottom;
    return isSameRow ? next.left >= before.right : next.top >= before.bottom;
}

void AddOrder(const std::vector<Part>& parts, Faults& faults) {
    const Part* before = nullptr;
    for (const Part& part : parts) {
        if ((StyleOf(part.window) & WS_TABSTOP) == 0) {
            continue;
        }
        if (before != nullptr && !IsAfter(part.area, before->area)) {
            faults.push_back(part.Name() + L" comes after " + before->Name());
        }
        before = &part;
    }
}

// The underlined letter of a control's text; 0 for none.
wchar_t MnemonicOf(HWND control) {
    const bool isLabel = Is(control, L"Static");
    if ((!isLabel && !Is(control, L"Button")) || (isLabel && (StyleOf(control) & SS_NOPREFIX) != 0)) {
        return 0;
    }
    wchar_t text[200] = L"";
    GetWindowTextW(control, text, ARRAYSIZE(text));
    for (const wchar_t* mark = text; (mark = wcschr(mark, L'&')) != nullptr; mark += 2) {
        if (mark[1] != L'&') {
            return static_cast<wchar_t>(towupper(mark[1]));
        }
    }
    return 0;
}

using Mnemonics = std::map<wchar_t, std::wstring>;

void AddMnemonics(const std::vector<Part>& parts, Mnemonics& taken, Faults& faults) {
    for (const Part& part : parts) {
        const wchar_t letter = MnemonicOf(part.window);
        if (letter != 0 && !taken.emplace(letter, part.Name()).second) {
            faults.push_back(part.Name() + L" has the letter of " + taken[letter]);
        }
    }
}

// What the system's controls consist of is the system's.
bool IsOurs(HWND window) {
    const std::wstring kind = KindOf(window);
    return kind == L"#32770" || kind == L"AtlAxWin" || kind == L"Static" || kind.starts_with(L"MXOV");
}

void AddFaults(HWND parent, Mnemonics& taken, Faults& faults) {
    const std::vector<Part> parts = PartsOf(parent);
    AddPlaces(parent, parts, faults);
    AddOrder(parts, faults);
    AddMnemonics(parts, taken, faults);
    for (const Part& part : parts) {
        if (IsOurs(part.window)) {
            AddFaults(part.window, taken, faults);
        }
    }
}

} // namespace

std::vector<std::wstring> LayoutFaults(HWND window) {
    Faults faults;
    Mnemonics taken;
    AddFaults(window, taken, faults);
    return faults;
}
