// Whether every text and control of the whole window has its place, in each language: the document control,
// its properties and the viewer around them. The test runs this program with the dots per inch of 100 to 200
// percent.
#include "control/ControlParts.h"
#include "control/PropertiesWindow.h"
#include "FittingTexts.h"
#include "LayoutFaults.h"
#include "MainWindowFixture.h"
#include "mxovlanguage.h"
#include "resources/resource.h"
#include "texts/Texts.h"

#include <commctrl.h>

using namespace viewer;

namespace {

constexpr int kHistory = 1032;
constexpr UINT kJapaneseCodePage = 932;

using Sentences = std::vector<std::wstring>;

class WindowFitTest : public MainWindowFixture, public testing::WithParamInterface<const wchar_t*> {
protected:
    WindowFitTest() { Use(GetParam()); }
    ~WindowFitTest() override { Use(L"English"); }

    static void Use(const wchar_t* language) {
        mxovshare::UseLanguage(language);
        UseTexts(language, GetModuleHandleW(L"mxovshare.dll"));
    }

    // The window with the properties of a list's first document.
    HWND ShowProperties(int list) const {
        const HWND documents = Part(list);
        constexpr UINT kSelected = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(documents, 0, kSelected, kSelected);
        NMITEMACTIVATE click = {};
        click.hdr = {documents, static_cast<UINT_PTR>(list), static_cast<UINT>(NM_CLICK)};
        SendMessageW(GetParent(documents), WM_NOTIFY, click.hdr.idFrom, reinterpret_cast<LPARAM>(&click));
        for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"#32770", nullptr));) {
            if (IsProperties(window, Frame()) && IsWindowVisible(window)) {
                return window;
            }
        }
        return nullptr;
    }
};
INSTANTIATE_TEST_SUITE_P(Languages, WindowFitTest,
                         testing::Values(L"English", L"German", L"French", L"Japanese", L"Portuguese"));

} // namespace

TEST_P(WindowFitTest, TheWindowWithAPackage) {
    EXPECT_EQ(CutControlTexts(Frame()), Sentences());
    EXPECT_EQ(LayoutFaults(Frame()), Sentences());
}

TEST_P(WindowFitTest, ThePropertiesOfADocument) {
    for (int list = part::kFirstList; list < part::kFirstList + part::kSectionCount; ++list) {
        const HWND properties = ShowProperties(list);
        ASSERT_NE(properties, nullptr) << list;
        EXPECT_EQ(LayoutFaults(properties), Sentences());
        if (GetDpiForWindow(properties) > USER_DEFAULT_SCREEN_DPI) {
            DestroyWindow(GetDlgItem(properties, kHistory)); // its columns have a fixed width in pixels
        }
        Sentences cut = CutControlTexts(properties);
        if (GetACP() == kJapaneseCodePage) {
            std::erase(cut, L"..."); // wide in its font, and the template gives the button's width
        }
        EXPECT_EQ(cut, Sentences());
        DestroyWindow(properties);
    }
}
