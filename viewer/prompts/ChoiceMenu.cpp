#include "prompts/ChoiceMenu.h"

#include "common/Handles.h"

namespace viewer {

namespace {

// As a menu shows it: "&" stands for itself.
std::wstring MenuText(const std::wstring& text) {
    std::wstring shown;
    for (const wchar_t unit : text) {
        shown += unit == L'&' ? L"&&" : std::wstring(1, unit);
    }
    return shown;
}

} // namespace

std::optional<std::wstring> ChooseFromMenu(HWND owner, const std::vector<std::wstring>& texts) {
    const common::UniqueOf<HMENU, &DestroyMenu> menu(CreatePopupMenu());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        AppendMenuW(menu.get(), MF_STRING, i + 1, MenuText(texts[i]).c_str());
    }
    RECT place = {};
    GetWindowRect(owner, &place);
    const auto chosen = static_cast<std::size_t>(
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY, (place.left + place.right) / 2,
                       (place.top + place.bottom) / 2, 0, owner, nullptr));
    return chosen > 0 && chosen <= texts.size() ? std::optional(texts[chosen - 1]) : std::nullopt;
}

} // namespace viewer
