// What opening, filling and closing the popup again and again leaves behind. MXOV_POPUP_CYCLES: how often;
// without it a few times, more often in ./test --long (MXOV_LONG).
#include "PopupFixture.h"
#include "ProcessResources.h"
#include "RealMouse.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr int kWarmUp = 20;
constexpr int kShortCycles = 30;
constexpr int kLongCycles = 200;
constexpr int kTemplateShare = 10; // one cycle of the template alone for so many of the popup
constexpr int kHistoryEntries = 20;
// What the system's own caches may take or return meanwhile, however many cycles there are.
constexpr int kToleratedObjects = 3;
constexpr std::int64_t kToleratedBytes = 16384;

int WantedCycles() {
    const char* wanted = std::getenv("MXOV_POPUP_CYCLES");
    if (wanted) {
        return std::atoi(wanted);
    }
    return std::getenv("MXOV_LONG") ? kLongCycles : kShortCycles;
}

void Print(const char* what, int count, const ProcessResources& grown) {
    std::printf("%d cycles of the %s: %s\n", count, what, grown.Text().c_str());
}

class Cycles : public PopupFixture {
public:
    Cycles() {
        m_history.clear();
        for (int i = 0; i < kHistoryEntries; ++i) {
            m_history.push_back({L"Updated", L"2024-05-14 08:52:10", L"M. Keller", L""});
        }
    }

    void TestBody() override {}

    void Run(int count) {
        for (int i = 0; i < count; ++i) {
            AFX_MANAGE_STATE(AfxGetStaticModuleState()); // as in a call from the host
            Fill(static_cast<DocumentCategory>(1 + i % 4));
            MXOVPopupDlg::Current()->ShowWindow(SW_SHOW);
            HandleMessages();
            MXOVPopupDlg::CloseOf(m_owner);
        }
    }

    /// The dialog's template alone, without the popup's code. Wine's static controls keep 24 bytes each.
    void RunBare(int count) {
        for (int i = 0; i < count; ++i) {
            AFX_MANAGE_STATE(AfxGetStaticModuleState());
            const HWND dialog =
                CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_DOCUMENT_PROPERTIES),
                                   m_owner.GetSafeHwnd(), HandleNothing, 0);
            ::ShowWindow(dialog, SW_SHOW);
            HandleMessages();
            ::DestroyWindow(dialog);
        }
    }

    /// Whether a real movement of the mouse gets through all hooks.
    bool MouseStillMoves() {
        RealMouse mouse;
        return mouse.Reach(m_owner.Other(), {5, 5});
    }

private:
    static INT_PTR CALLBACK HandleNothing(HWND /*dialog*/, UINT message, WPARAM /*wParam*/,
                                          LPARAM /*lParam*/) {
        return message == WM_INITDIALOG;
    }
};

} // namespace

TEST(MXOVPopupEnduranceTest, CyclesLeaveNothingButTheirHooks) {
    // On a thread of its own: the hooks that remain end with it.
    std::thread([] {
        Cycles cycles;
        cycles.Run(kWarmUp);
        const int count = WantedCycles();
        cycles.RunBare(kWarmUp);
        const ProcessResources first = ProcessResources::Count();
        cycles.RunBare(count / kTemplateShare);
        const ProcessResources before = ProcessResources::Count();
        const ProcessResources platform = before - first;
        cycles.Run(count);
        const ProcessResources grown = ProcessResources::Count() - before;
        Print("template alone", count / kTemplateShare, platform);
        Print("popup", count, grown);
        EXPECT_LE(grown.AllGdiObjects(), kToleratedObjects);
        EXPECT_LE(grown.handles, kToleratedObjects);
        EXPECT_LE(grown.heapBytes - platform.heapBytes * kTemplateShare, kToleratedBytes);
        EXPECT_NEAR(grown.userObjects, count, kToleratedObjects) << "one hook for each popup and no more";
        EXPECT_TRUE(cycles.MouseStillMoves());
    }).join();
}
