#include "window/RecentMenu.h"

#include "resources/resource.h"
#include "texts/Texts.h"

#include <shlwapi.h>

namespace viewer {

namespace {

// A menu text that shows a path, shortened in the middle, with a digit to choose it by.
std::wstring RecentText(std::size_t index, const std::wstring& path) {
    constexpr UINT kMostCharacters = 60;
    wchar_t compact[kMostCharacters + 1] = L"";
    if (!PathCompactPathExW(compact, path.c_str(), ARRAYSIZE(compact), 0)) {
        return path;
    }
    std::wstring text = L"&" + std::to_wstring(index + 1) + L"  ";
    for (const wchar_t* character = compact; *character; ++character) {
        text.append(*character == L'&' ? 2 : 1, *character);
    }
    return text;
}

} // namespace

bool IsRecentMenu(HMENU menu) {
    const UINT first = GetMenuItemID(menu, 0);
    return first == IDM_RECENT_NONE || (first >= IDM_RECENT_FIRST && first <= IDM_RECENT_LAST);
}

void FillRecentMenu(HMENU menu, const std::vector<std::wstring>& paths, bool enabled) {
    while (RemoveMenu(menu, 0, MF_BYPOSITION)) {
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        AppendMenuW(menu, enabled ? MF_ENABLED : MF_GRAYED, IDM_RECENT_FIRST + i,
                    RecentText(i, paths[i]).c_str());
    }
    if (paths.empty()) {
        AppendMenuW(menu, MF_GRAYED, IDM_RECENT_NONE, Text(IDM_RECENT_NONE).c_str());
    }
}

} // namespace viewer
