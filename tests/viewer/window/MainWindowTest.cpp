// The viewer's window as a whole, with the registered control, when the system changes around it.
#include "MainWindowFixture.h"

#include "care/FindingsWindow.h"
#include "PaintedColours.h"
#include "resources/resource.h"
#include "SystemColours.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <set>

using namespace viewer;

namespace {

constexpr int kFirstListOfControl = 1004;
constexpr WPARAM kShownFocus = MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS);

// The messages that a window receives while it lives.
class MessageRecord {
public:
    explicit MessageRecord(HWND window) : m_window(window) {
        SetWindowSubclass(window, Record, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~MessageRecord() { RemoveWindowSubclass(m_window, Record, 1); }
    MessageRecord(const MessageRecord&) = delete;
    MessageRecord& operator=(const MessageRecord&) = delete;
    [[nodiscard]] bool Has(UINT message, WPARAM wParam = 0) const {
        return m_messages.contains({message, wParam});
    }

private:
    static LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR self) {
        reinterpret_cast<MessageRecord*>(self)->m_messages.insert({message, wParam});
        return DefSubclassProc(window, message, wParam, lParam);
    }

    HWND m_window;
    std::set<std::pair<UINT, WPARAM>> m_messages;
};

class MainWindowTest : public MainWindowFixture {
protected:
    [[nodiscard]] int HeightOf(int id) const {
        const RECT area = PlaceOf(Part(id));
        return static_cast<int>(area.bottom - area.top);
    }
    // The places of all windows inside.
    [[nodiscard]] std::vector<RECT> Places() const {
        std::vector<RECT> places;
        for (const HWND window : DescendantsOf(Frame())) {
            places.push_back(PlaceOf(window));
        }
        return places;
    }
    void ChangeDpi(UINT dpi, RECT suggested) const {
        SendMessageW(Frame(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
    }
};

} // namespace

TEST_F(MainWindowTest, EveryWindowInsideLearnsOfChangesOfTheLook) {
    const MessageRecord list(Part(kFirstListOfControl));
    const MessageRecord tabs(Part(IDC_TABS));
    const MessageRecord status(Part(IDC_STATUS));
    for (const UINT message : {WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_SETTINGCHANGE}) {
        SendMessageW(Frame(), message, 0, 0);
        EXPECT_TRUE(list.Has(message)) << message;
        EXPECT_TRUE(tabs.Has(message)) << message;
        EXPECT_TRUE(status.Has(message)) << message;
    }
}

TEST_F(MainWindowTest, ASwitchOfTheColoursIsSeenAtOnce) {
    const COLORREF page = GetSysColor(COLOR_BTNFACE);
    EXPECT_GT(CountColours(Part(IDC_PREVIEW), 2)[page], 400);
    const DarkSystemColours dark;
    PumpUntil([] { return false; }, 300); // what is left to be painted
    std::map<COLORREF, int> colours = CountColours(Part(IDC_PREVIEW), 2);
    EXPECT_GT(colours[kDarkPage], 400);
    EXPECT_EQ(colours[page], 0);
}

TEST_F(MainWindowTest, TheFocusIsVisibleFromTheStart) {
    const MessageRecord frame(Frame());
    m_window.Show(SW_SHOWNORMAL);
    EXPECT_TRUE(frame.Has(WM_UPDATEUISTATE, kShownFocus));
}

TEST_F(MainWindowTest, AndInADialogOnceThatIsCreated) {
    FindingsWindow findings([](CureCommand) {});
    findings.Show(Frame(), L"bracket.mxov", {});
    const MessageRecord dialog(findings.Handle());
    EXPECT_TRUE(PumpUntil([&dialog] { return dialog.Has(WM_UPDATEUISTATE, kShownFocus); }));
}

TEST(FocusCues, NoRequestHidesTheFocus) {
    EXPECT_EQ(WithFocusSeen(MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS | UISF_HIDEACCEL)),
              static_cast<WPARAM>(MAKEWPARAM(UIS_SET, UISF_HIDEACCEL)));
    EXPECT_EQ(WithFocusSeen(UIS_INITIALIZE), kShownFocus);
    EXPECT_EQ(WithFocusSeen(kShownFocus), kShownFocus);
}

TEST_F(MainWindowTest, OnAMonitorWithOtherDotsItTakesTheSuggestedPlaceAndItsPartsGrow) {
    RECT area = {};
    GetWindowRect(Frame(), &area);
    const std::vector<RECT> before = Places();
    const int status = HeightOf(IDC_STATUS);
    const int tabs = HeightOf(IDC_TABS);
    const int picture = static_cast<int>(PlaceOf(Part(IDC_PREVIEW)).top);
    ChangeDpi(2 * GetDpiForSystem(), {10, 20, 1250, 920});
    RECT now = {};
    GetWindowRect(Frame(), &now);
    EXPECT_EQ(now.left, 10);
    EXPECT_EQ(now.top, 20);
    EXPECT_EQ(now.right, 1250);
    EXPECT_EQ(now.bottom, 920);
    EXPECT_GE(HeightOf(IDC_STATUS), status * 7 / 5); // its edges do not grow
    EXPECT_GT(HeightOf(IDC_TABS), tabs * 3 / 2);
    EXPECT_GT(PlaceOf(Part(IDC_PREVIEW)).top, picture * 3 / 2);
    ChangeDpi(GetDpiForSystem(), area);
    const std::vector<RECT> after = Places();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_TRUE(EqualRect(&after[i], &before[i])) << i;
    }
}
