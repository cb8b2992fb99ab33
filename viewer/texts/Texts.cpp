#include "texts/Texts.h"

#include "common/Language.h"

namespace viewer {

namespace {

common::UniqueModule& Language() {
    static common::UniqueModule module;
    return module;
}

// Empty when the module has no such text.
std::wstring Load(HMODULE module, UINT number) {
    const wchar_t* text = nullptr;
    constexpr int kPointerWanted = 0;
    const int length = LoadStringW(module, number, reinterpret_cast<LPWSTR>(&text), kPointerWanted);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

std::wstring Insert(const std::wstring& text, std::initializer_list<std::wstring> inserts) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t index = text[i] == L'%' && i + 1 < text.size()
                                      ? static_cast<std::size_t>(text[i + 1] - L'1')
                                      : inserts.size();
        if (index < inserts.size()) {
            result += inserts.begin()[index];
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace

void UseTexts(const std::wstring& language, HMODULE beside) {
    Language() = common::LoadLanguageModule(beside, language, L"viewertexts.dll");
}

std::wstring Text(UINT number, std::initializer_list<std::wstring> inserts) {
    std::wstring text = Language() ? Load(Language().get(), number) : std::wstring();
    if (text.empty()) {
        text = Load(GetModuleHandleW(nullptr), number);
    }
    return Insert(text, inserts);
}

void TranslateMenu(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_SUBMENU;
        GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        if (std::wstring text = Text(item.wID); !text.empty()) {
            item.fMask = MIIM_STRING;
            item.dwTypeData = text.data();
            SetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        }
        if (item.hSubMenu) {
            TranslateMenu(item.hSubMenu);
        }
    }
}

} // namespace viewer
