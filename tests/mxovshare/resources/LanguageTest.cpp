// The languages of the host's resource module: which is chosen, and whether its texts fit where they are
// shown.
#include "common/Paths.h"
#include "HostResources.h"
#include "mxovlanguage.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

namespace {

using mxovshare::OVApplication;
using mxovshare::UseLanguage;

constexpr std::array<UINT, 14> kTexts = {137, 138, 139, 140, 141, 144, 145,
                                         146, 147, 148, 149, 150, 151, 152};
constexpr std::array<const wchar_t*, 5> kLanguages = {L"English", L"German", L"French", L"Japanese",
                                                      L"Portuguese"};

bool HasIcon(WORD id) {
    const common::UniqueIcon icon(static_cast<HICON>(
        LoadImageW(OVApplication::hMXOVResInstance, MAKEINTRESOURCEW(id), IMAGE_ICON, 16, 16, 0)));
    return icon != nullptr;
}

class Language : public testing::Test {
protected:
    void TearDown() override { UseLanguage(L"English"); }
};

// The same for every language.
class EachLanguage : public testing::TestWithParam<const wchar_t*> {
protected:
    void SetUp() override { ASSERT_TRUE(UseLanguage(GetParam())); }
    void TearDown() override { UseLanguage(L"English"); }
};
INSTANTIATE_TEST_SUITE_P(Languages, EachLanguage, testing::ValuesIn(kLanguages));

// Measures in the font of the dialogs.
class Ruler {
public:
    explicit Ruler(int weight = FW_NORMAL)
        : m_dc(CreateCompatibleDC(nullptr)), m_font(CreateFontW(-11, 0, 0, 0, weight, FALSE, FALSE, FALSE,
                                                                DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma")),
          m_previous(SelectObject(m_dc.get(), m_font.get())) {}
    ~Ruler() { SelectObject(m_dc.get(), m_previous); }
    Ruler(const Ruler&) = delete;
    Ruler& operator=(const Ruler&) = delete;

    [[nodiscard]] int Width(const std::wstring& text) const {
        SIZE size{};
        GetTextExtentPoint32W(m_dc.get(), text.c_str(), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    }

    // Pixels of a width in dialog units.
    [[nodiscard]] int Pixels(int units) const {
        const int letters = Width(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        return MulDiv(units, (letters / 26 + 1) / 2, 4);
    }

private:
    common::UniqueMemoryDc m_dc;
    common::UniqueFont m_font;
    HGDIOBJ m_previous;
};

TEST_F(Language, TheNameChoosesTheModule) {
    const std::array<std::wstring, 5> descriptions = {L"Path", L"Pfad", L"Chemin", L"パス", L"Caminho"};
    for (std::size_t i = 0; i < kLanguages.size(); ++i) {
        EXPECT_TRUE(UseLanguage(kLanguages[i]));
        EXPECT_EQ(OVApplication::mxLanguageName, kLanguages[i]);
        EXPECT_EQ(Text(146), descriptions[i]);
    }
}

TEST_F(Language, EnglishIsInsideTheLibrary) {
    ASSERT_TRUE(UseLanguage(L"German"));
    EXPECT_NE(OVApplication::hMXOVResInstance, GetModuleHandleW(L"mxovshare.dll"));
    EXPECT_TRUE(UseLanguage(L"English"));
    EXPECT_EQ(OVApplication::hMXOVResInstance, GetModuleHandleW(L"mxovshare.dll"));
}

TEST_F(Language, AnUnknownNameIsKeptAndShowsEnglish) {
    for (const wchar_t* name : {L"Klingon", L"portuguese", L"", L"C:\\lang\\german", L"..\\lang\\german",
                                L"../lang/german", L".", L"German\\"}) {
        ASSERT_TRUE(UseLanguage(L"German"));
        EXPECT_FALSE(UseLanguage(name)) << name;
        EXPECT_EQ(OVApplication::mxLanguageName, name);
        EXPECT_EQ(OVApplication::hMXOVResInstance, GetModuleHandleW(L"mxovshare.dll")) << name;
    }
}

TEST_F(Language, ADamagedModuleShowsEnglish) {
    const std::wstring folder = common::ModuleFolder(GetModuleHandleW(L"mxovshare.dll")) + L"\\lang\\damaged";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS);
    const std::wstring file = folder + L"\\mxovtexts.dll";
    for (const std::string& bytes : {std::string(), std::string("not a module"), std::string(5000, 'M')}) {
        HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        CloseHandle(handle);
        ASSERT_TRUE(UseLanguage(L"German"));
        EXPECT_FALSE(UseLanguage(L"Damaged")) << bytes.size();
        EXPECT_EQ(Text(146), L"Path");
    }
    EXPECT_TRUE(DeleteFileW(file.c_str()));
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
}

TEST_F(Language, TheModuleOfTheLanguageBeforeIsReleased) {
    ASSERT_TRUE(UseLanguage(L"German"));
    const auto handle = reinterpret_cast<std::uintptr_t>(OVApplication::hMXOVResInstance);
    const auto* const start =
        reinterpret_cast<const void*>(handle & ~std::uintptr_t{3}); // low bits are flags
    MEMORY_BASIC_INFORMATION memory{};
    ASSERT_NE(VirtualQuery(start, &memory, sizeof memory), 0U);
    EXPECT_EQ(memory.State, DWORD{MEM_COMMIT});
    ASSERT_TRUE(UseLanguage(L"English"));
    ASSERT_NE(VirtualQuery(start, &memory, sizeof memory), 0U);
    EXPECT_EQ(memory.State, DWORD{MEM_FREE});
}

TEST_P(EachLanguage, HasEveryTextAndNoOther) {
    for (const UINT id : kTexts) {
        EXPECT_FALSE(Text(id).empty()) << id;
    }
    for (const UINT id : {136U, 142U, 143U, 153U}) {
        EXPECT_TRUE(Text(id).empty()) << id;
    }
}

TEST_P(EachLanguage, HasSentencesOfItsOwn) {
    std::array<std::wstring, 4> texts;
    for (UINT id = 149; id <= 152; ++id) {
        texts.at(id - 149) = Text(id);
    }
    for (const wchar_t* other : kLanguages) {
        if (std::wstring(other) == GetParam()) {
            continue;
        }
        ASSERT_TRUE(UseLanguage(other));
        for (UINT id = 149; id <= 152; ++id) {
            EXPECT_NE(texts.at(id - 149), Text(id)) << id << " is the same in " << other;
        }
    }
}

TEST_P(EachLanguage, HasThePictures) {
    EXPECT_EQ(BitmapSize(145).cx, 125);
    EXPECT_EQ(BitmapSize(145).cy, 125);
    EXPECT_EQ(BitmapSize(149).cx, 20);
    EXPECT_EQ(BitmapSize(149).cy, 20);
    EXPECT_TRUE(HasIcon(146));
    EXPECT_TRUE(HasIcon(147));
    EXPECT_FALSE(HasIcon(148));
}

TEST_P(EachLanguage, ColumnTitlesFitTheirColumns) {
    constexpr int kHeaderMargins = 12;
    const Ruler ruler;
    const std::array<std::pair<UINT, int>, 6> columns = {
        {{137, 150}, {138, 40}, {139, 150}, {140, 55}, {139, 90}, {141, 80}}};
    for (const auto& [id, width] : columns) {
        EXPECT_LE(ruler.Width(Text(id)) + kHeaderMargins, width) << id;
    }
}

TEST_P(EachLanguage, TheSavedOperationFitsItsHistoryColumn) {
    constexpr int kCellMargins = 10;
    EXPECT_LE(Ruler().Width(Text(148)) + kCellMargins, 55);
}

TEST_P(EachLanguage, LabelsFitBeforeTheirFields) {
    const Ruler ruler;
    for (const UINT id : {138U, 145U, 146U, 147U}) {
        EXPECT_LE(ruler.Width(Text(id) + L" : "), ruler.Pixels(58)) << id;
    }
    EXPECT_LE(ruler.Width(Text(150)), ruler.Pixels(186));
}

TEST_P(EachLanguage, TheTitleOfTheGroupBoxFitsBeforeItsIcon) {
    constexpr int kTitleStart = 5;
    constexpr int kIconAndGap = 20;
    EXPECT_LE(Ruler(FW_BOLD).Width(Text(144)), Ruler().Pixels(196) - kTitleStart - kIconAndGap);
}

TEST_P(EachLanguage, TheCheckBoxLabelFitsOneLineOfTheFileDialog) {
    constexpr int kCheckBoxWidth = 160;
    constexpr int kBoxAndGap = 20;
    EXPECT_LE(Ruler().Width(Text(151)), kCheckBoxWidth - kBoxAndGap);
}

} // namespace
