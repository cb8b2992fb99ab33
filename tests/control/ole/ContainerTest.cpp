// Containers that the control meets in the field: sloppy, strict and hostile ones.
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <algorithm>
#include <utility>

namespace {

class ContainerTest : public EmbeddedControlTest {
protected:
    [[nodiscard]] size_t Count(const std::string& call) const {
        return static_cast<size_t>(std::ranges::count(container.Calls(), call));
    }
    /// Takes the focus out of the control and makes it inactive again, as containers do.
    void Leave() {
        SetFocus(container.Window());
        InPlace()->UIDeactivate();
        container.ForgetCalls();
    }
};

} // namespace

TEST_F(ContainerTest, ContentIsDrawnAndMeasuredWithAnyIndex) {
    const auto view = As<IViewObjectEx>(control.Get(), IID_IViewObjectEx);
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    const RECTL bounds = {0, 0, 50, 50};
    for (const LONG index : {-1L, 0L, 1L, LONG_MAX}) {
        EXPECT_EQ(S_OK, view->Draw(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                   nullptr, 0))
            << index;
        SIZEL size = {};
        EXPECT_EQ(S_OK, view->GetExtent(DVASPECT_CONTENT, index, nullptr, &size)) << index;
        LOGPALETTE* colours = nullptr;
        EXPECT_EQ(S_FALSE, view->GetColorSet(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, &colours))
            << index;
    }
    EXPECT_EQ(DV_E_LINDEX,
              view->Draw(DVASPECT_OPAQUE, 0, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0));
    EXPECT_EQ(DV_E_DVASPECT, view->Draw(DVASPECT_THUMBNAIL, -1, nullptr, nullptr, nullptr, dc, &bounds,
                                        nullptr, nullptr, 0));
    DeleteDC(dc);
}

TEST_F(ContainerTest, FocusThatArrivesInAnyWayActivatesTheUserInterface) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
    for (const HWND window :
         {container.ControlWindow(), Dialog(), Item(kPartList), Item(kSetupList), Item(kAddButton)}) {
        Leave();
        ASSERT_FALSE(container.HasActiveObject());
        SetFocus(window);
        EXPECT_EQ(1U, Count("OnUIActivate")) << GetDlgCtrlID(window);
        EXPECT_TRUE(container.HasActiveObject()) << GetDlgCtrlID(window);
        EXPECT_EQ(1U, Count("OnFocus(1)")) << GetDlgCtrlID(window);
        EXPECT_TRUE(IsChild(Dialog(), GetFocus())) << GetDlgCtrlID(window);
    }
}

TEST_F(ContainerTest, ActivationInPlaceLeavesTheFocusWhereItIs) {
    SetFocus(container.Window());
    ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
    EXPECT_EQ(container.Window(), GetFocus());
    EXPECT_FALSE(container.HasActiveObject());
}

TEST_F(ContainerTest, FocusThatLeavesIsReportedOnceAndItsReturnToo) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    container.ForgetCalls();
    SetFocus(Item(kSetupList));
    SetFocus(Item(kAddButton));
    EXPECT_EQ(0U, Count("OnFocus(0)") + Count("OnFocus(1)")) << "it stayed inside";
    SetFocus(container.Window());
    EXPECT_EQ(1U, Count("OnFocus(0)"));
    EXPECT_TRUE(container.HasActiveObject()) << "the container decides when another object is active";
    SetFocus(Item(kAddButton));
    EXPECT_EQ(1U, Count("OnFocus(1)"));
    EXPECT_EQ(0U, Count("OnUIActivate")) << "active all the time";
    SetFocus(nullptr);
    EXPECT_EQ(2U, Count("OnFocus(0)")) << "to another program";
}

TEST_F(ContainerTest, ContainerMayCloseTheControlWhenTheFocusArrivesOrLeaves) {
    for (const std::string moment : {"OnUIActivate", "SetActiveObject", "OnFocus(1)", "OnFocus(0)"}) {
        ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
        bool done = false;
        container.onCall = [&](const std::string& name) {
            if (name == moment && !std::exchange(done, true)) {
                container.Remove();
                control.Reset();
            }
        };
        SetFocus(Item(kPartList));
        SetFocus(container.Window());
        EXPECT_FALSE(control) << moment;
        EXPECT_FALSE(container.ControlWindow()) << moment;
        Pump();
        EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow")) << moment;
        container.onCall = nullptr;
        control = CreateControl();
    }
}

TEST_F(ContainerTest, HostWithDialogMessagesAloneTabsIntoIt) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
    const HWND before = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 50, 15,
                                        container.Window(), nullptr, nullptr, nullptr);
    SetWindowPos(before, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetFocus(before);
    MSG tab = {before, WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    ASSERT_TRUE(IsDialogMessageW(container.Window(), &tab));
    EXPECT_EQ(Item(kPartList), GetFocus());
    EXPECT_TRUE(container.HasActiveObject());
    DestroyWindow(before);
}

TEST_F(ContainerTest, ItsWindowClipsItsDialogAndLetsTabIn) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
    EXPECT_NE(GetWindowLongW(container.ControlWindow(), GWL_STYLE) & WS_CLIPCHILDREN, 0);
    EXPECT_NE(GetWindowLongW(container.ControlWindow(), GWL_EXSTYLE) & WS_EX_CONTROLPARENT, 0);
}

TEST_F(ContainerTest, DeactivationInsideTheActivationLeavesNoActiveObject) {
    for (const std::string moment :
         {"OnUIActivate", "SetActiveObject", "SetBorderSpace(null)", "OnFocus(1)"}) {
        ASSERT_EQ(S_OK, Activate(OLEIVERB_INPLACEACTIVATE));
        container.ForgetCalls();
        bool done = false;
        container.onCall = [&](const std::string& name) {
            if (name == moment && !std::exchange(done, true)) {
                EXPECT_EQ(S_OK, InPlace()->UIDeactivate());
            }
        };
        EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE)) << moment;
        container.onCall = nullptr;
        EXPECT_EQ(1U, Count("OnUIDeactivate")) << moment;
        EXPECT_FALSE(container.HasActiveObject()) << moment;
        EXPECT_EQ(Count("OnFocus(1)"), Count("OnFocus(0)")) << moment;
        EXPECT_TRUE(container.ControlWindow()) << "still active in place";
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
        EXPECT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(container.HasActiveObject()) << "the next activation counts";
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
    }
}

TEST_F(ContainerTest, PicturesOfOtherSizesLeaveTheDialogInItsPlace) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    Pump();
    MockSink sink;
    ASSERT_EQ(S_OK, View()->SetAdvise(DVASPECT_CONTENT, 0, &sink));
    const auto expectInPlace = [&](const char* after) {
        RECT dialog = {};
        RECT window = {};
        GetWindowRect(Dialog(), &dialog);
        GetWindowRect(container.ControlWindow(), &window);
        EXPECT_TRUE(EqualRect(&window, &dialog)) << after;
    };
    expectInPlace("activation");
    const HDC dc = CreateCompatibleDC(nullptr);
    for (const RECTL& bounds : {RECTL{0, 0, 2000, 3000}, RECTL{30, 40, 90, 80}, RECTL{-500, 0, -100, 100}}) {
        ASSERT_EQ(S_OK, View()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                     nullptr, 0));
        expectInPlace("printing");
    }
    DeleteDC(dc);
    for (auto [kind, type] : {std::pair<CLIPFORMAT, DWORD>{CF_ENHMETAFILE, TYMED_ENHMF},
                              std::pair<CLIPFORMAT, DWORD>{CF_METAFILEPICT, TYMED_MFPICT}}) {
        FORMATETC format = {kind, nullptr, DVASPECT_CONTENT, -1, type};
        STGMEDIUM medium = {};
        ASSERT_EQ(S_OK, As<IDataObject>(control.Get(), IID_IDataObject)->GetData(&format, &medium));
        ReleaseStgMedium(&medium);
        expectInPlace("a metafile");
    }
    EXPECT_TRUE(sink.calls.empty()) << "a container that draws on every notice would never end";
    EXPECT_EQ(S_OK, View()->SetAdvise(DVASPECT_CONTENT, 0, nullptr));
}
