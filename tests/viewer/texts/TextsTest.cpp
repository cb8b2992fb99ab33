// The viewer's texts in each language, as the delivered modules and the menu of the delivered program have
// them.
#include "texts/Texts.h"

#include "common/Language.h"
#include "resources/resource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <vector>

using namespace viewer;

namespace {

constexpr std::array<const wchar_t*, 4> kOtherLanguages = {L"German", L"French", L"Japanese", L"Portuguese"};
constexpr UINT kHighestNumber = 2000;

using Numbered = std::map<UINT, std::wstring>;

// Everything delivered lies beside this library.
HMODULE Delivered() {
    return GetModuleHandleW(L"mxovshare.dll");
}

const common::UniqueModule& Program() {
    static const common::UniqueModule program(
        LoadLibraryExW((common::ModuleFolder(Delivered()) + L"\\viewer.exe").c_str(), nullptr,
                       LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
    return program;
}

Numbered StringsOf(HMODULE module) {
    Numbered strings;
    for (UINT number = 1; number < kHighestNumber; ++number) {
        const wchar_t* text = nullptr;
        const int length = LoadStringW(module, number, reinterpret_cast<LPWSTR>(&text), 0);
        if (length > 0) {
            strings[number].assign(text, static_cast<std::size_t>(length));
        }
    }
    return strings;
}

using UniqueMenu = common::UniqueOf<HMENU, &DestroyMenu>;

UniqueMenu MainMenu() {
    return UniqueMenu(LoadMenuW(Program().get(), MAKEINTRESOURCEW(IDR_MAIN)));
}

// The items of one menu with their texts; separators have the number 0.
std::vector<std::pair<UINT, std::wstring>> ItemsOf(HMENU menu) {
    std::vector<std::pair<UINT, std::wstring>> items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[200] = L"";
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_STRING;
        item.dwTypeData = text;
        item.cch = ARRAYSIZE(text);
        GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        items.emplace_back(item.wID, text);
    }
    return items;
}

// The menu and all menus below it.
std::vector<HMENU> MenusOf(HMENU menu) {
    std::vector<HMENU> menus = {menu};
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (const HMENU below = GetSubMenu(menu, i)) {
            std::ranges::copy(MenusOf(below), std::back_inserter(menus));
        }
    }
    return menus;
}

// The English texts: those of the program, and those of its menu.
Numbered EnglishTexts() {
    Numbered texts = StringsOf(Program().get());
    const UniqueMenu menu = MainMenu();
    for (const HMENU part : MenusOf(menu.get())) {
        for (const auto& [number, text] : ItemsOf(part)) {
            if (number != 0) {
                texts.try_emplace(number, text);
            }
        }
    }
    return texts;
}

std::set<std::wstring> PlaceholdersOf(const std::wstring& text) {
    std::set<std::wstring> places;
    for (std::size_t i = text.find(L'%'); i != std::wstring::npos; i = text.find(L'%', i + 1)) {
        places.insert(text.substr(i, 2));
    }
    return places;
}

// The character that is pressed to choose an item; 0 when it has none.
wchar_t MnemonicOf(const std::wstring& text) {
    const std::size_t mark = text.find(L'&');
    if (mark == std::wstring::npos || mark + 1 >= text.size()) {
        return 0;
    }
    wchar_t character = text[mark + 1];
    CharUpperBuffW(&character, 1);
    return character;
}

bool HaveTheirOwnMnemonics(const std::vector<std::wstring>& texts) {
    std::set<wchar_t> used;
    return std::ranges::all_of(texts, [&used](const std::wstring& text) {
        const wchar_t mnemonic = MnemonicOf(text);
        return mnemonic != 0 && used.insert(mnemonic).second;
    });
}

void ExpectOwnMnemonics(HMENU menu) {
    for (const HMENU part : MenusOf(menu)) {
        std::vector<std::wstring> texts;
        for (const auto& [number, text] : ItemsOf(part)) {
            if (number != 0 && number != IDM_RECENT_NONE) {
                texts.push_back(text);
            }
        }
        EXPECT_TRUE(HaveTheirOwnMnemonics(texts)) << testing::PrintToString(texts);
    }
}

// The part behind the tab: a shortcut.
std::wstring ShortcutOf(const std::wstring& text) {
    return text.substr(std::min(text.find(L'\t'), text.size()));
}

std::wstring KeyOf(const std::wstring& text) {
    const std::wstring shortcut = ShortcutOf(text);
    return shortcut.substr(std::min(shortcut.find_last_of(L"+\t") + 1, shortcut.size()));
}

// Whether a command asks for more before it does something.
bool IsAsking(const std::wstring& text) {
    return text.substr(0, text.find(L'\t')).ends_with(L"...");
}

// The buttons that stand in one prompt.
const std::vector<std::vector<UINT>> kPrompts = {
    {IDS_CONTINUE, IDS_DISCARD, IDS_ASK_LATER},
    {IDS_SAVE, IDS_DISCARD, IDS_GO_ON},
    {IDS_TRY_AGAIN, IDS_CLOSE_ANYWAY, IDS_GO_ON},
    {IDS_GO_ON, IDS_SAVE_COPY, IDS_KEEP, IDS_DISCARD},
    {IDS_LINK, IDS_COPY},
    {IDS_KEEP_BOTH, IDS_REPLACE},
    {IDS_LOOK_AT, IDS_COMPARE_VERSION, IDS_TAKE_DOCUMENT, IDS_TAKE_ALL, IDS_KEEP_VERSIONS, IDS_CLOSE},
    {IDM_DOCUMENT_OPEN, IDM_DOCUMENT_FIND, IDM_DOCUMENT_SAVE, IDM_DOCUMENT_SHOW, IDM_DOCUMENT_OPEN_WITH,
     IDM_DOCUMENT_COPY_PATH},
};

class ViewerTexts : public testing::Test {
protected:
    void TearDown() override { UseTexts(L"English", Delivered()); }
};

// A language besides English.
class ViewerTextsOf : public ViewerTexts, public testing::WithParamInterface<const wchar_t*> {
protected:
    ViewerTextsOf() : m_module(common::LoadLanguageModule(Delivered(), GetParam(), L"viewertexts.dll")) {}
    void SetUp() override { ASSERT_TRUE(m_module); }

    [[nodiscard]] Numbered Strings() const { return StringsOf(m_module.get()); }

private:
    common::UniqueModule m_module;
};
INSTANTIATE_TEST_SUITE_P(Languages, ViewerTextsOf, testing::ValuesIn(kOtherLanguages));

} // namespace

TEST_F(ViewerTexts, AreEnglishByDefaultAndForAnUnknownLanguage) {
    EXPECT_EQ(Text(IDS_READY), L"Ready");
    for (const wchar_t* name : {L"German", L"Klingon", L"", L"..\\lang\\german"}) {
        UseTexts(L"Portuguese", Delivered());
        EXPECT_EQ(Text(IDS_READY), L"Pronto");
        UseTexts(name, Delivered());
        EXPECT_EQ(Text(IDS_READY), name == std::wstring(L"German") ? L"Bereit" : L"Ready") << name;
    }
}

TEST_F(ViewerTexts, InsertsTakeTheirPlaces) {
    EXPECT_EQ(Text(IDS_ATTACH_MANY, {L"3", L"a.mxov"}), L"Attach 3 documents to a.mxov?");
    EXPECT_EQ(Text(IDS_ATTACH_MANY, {L"%2", L"100 %1 %"}), L"Attach %2 documents to 100 %1 %?");
    EXPECT_EQ(Text(IDS_READY, {L"unused"}), L"Ready");
    EXPECT_EQ(Text(kHighestNumber, {L"unused"}), L"");
}

TEST_F(ViewerTexts, TheMenuHasItsOwnTextsInEnglish) {
    const UniqueMenu menu = MainMenu();
    const std::vector<std::pair<UINT, std::wstring>> before = ItemsOf(menu.get());
    ASSERT_GT(before.size(), 3U);
    TranslateMenu(menu.get());
    EXPECT_EQ(ItemsOf(menu.get()), before);
}

TEST_P(ViewerTextsOf, AreAllThereAndNoOther) {
    const Numbered english = EnglishTexts();
    const Numbered strings = Strings();
    ASSERT_GT(english.size(), 100U);
    for (const auto& [number, text] : english) {
        EXPECT_TRUE(strings.contains(number)) << number << ' ' << testing::PrintToString(text);
    }
    for (const auto& [number, text] : strings) {
        EXPECT_TRUE(english.contains(number)) << number << ' ' << testing::PrintToString(text);
    }
}

TEST_P(ViewerTextsOf, HaveThePlaceholdersAndLinesOfTheEnglishOnes) {
    const Numbered english = EnglishTexts();
    for (const auto& [number, text] : Strings()) {
        const std::wstring& original = english.at(number);
        EXPECT_EQ(PlaceholdersOf(text), PlaceholdersOf(original)) << number;
        EXPECT_EQ(std::ranges::count(text, L'\n'), std::ranges::count(original, L'\n')) << number;
    }
}

TEST_P(ViewerTextsOf, NameTheSameKeysAndAskAlike) {
    const Numbered english = EnglishTexts();
    for (const auto& [number, text] : Strings()) {
        EXPECT_EQ(KeyOf(text), KeyOf(english.at(number))) << number;
        EXPECT_EQ(IsAsking(text), IsAsking(english.at(number))) << number;
        EXPECT_EQ(MnemonicOf(text) != 0, MnemonicOf(english.at(number)) != 0) << number;
    }
}

TEST_P(ViewerTextsOf, MenusHaveUniqueMnemonics) {
    const UniqueMenu menu = MainMenu();
    ExpectOwnMnemonics(menu.get()); // of the English ones
    UseTexts(GetParam(), Delivered());
    TranslateMenu(menu.get());
    ExpectOwnMnemonics(menu.get());
}

TEST_P(ViewerTextsOf, PromptsHaveUniqueMnemonics) {
    for (const wchar_t* language : {GetParam(), L"English"}) {
        UseTexts(language, Delivered());
        for (const std::vector<UINT>& prompt : kPrompts) {
            std::vector<std::wstring> texts;
            std::ranges::transform(prompt, std::back_inserter(texts),
                                   [](UINT number) { return Text(number); });
            EXPECT_TRUE(HaveTheirOwnMnemonics(texts)) << testing::PrintToString(texts);
        }
    }
}

TEST_P(ViewerTextsOf, TheMenuIsTranslated) {
    UseTexts(GetParam(), Delivered());
    const Numbered strings = Strings();
    const UniqueMenu menu = MainMenu();
    TranslateMenu(menu.get());
    for (const HMENU part : MenusOf(menu.get())) {
        for (const auto& [number, text] : ItemsOf(part)) {
            EXPECT_EQ(text, number == 0 ? std::wstring() : strings.at(number)) << number;
        }
    }
}
