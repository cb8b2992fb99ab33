#include "GdiObjectCount.h"
#include "OleTestControl.h"

#include <algorithm>

namespace {

class ControlActivationTest : public OleTest {
protected:
    void TearDown() override {
        m_container.Remove();
        m_control.Reset();
        EXPECT_EQ(1, m_container.References()) << "the control kept something of its container";
        OleTest::TearDown();
    }
    void Embed() {
        m_control = CreateControl();
        m_container.Embed(m_control.Get());
    }
    static RECT RectOf(HWND window) {
        RECT rect{};
        ::GetWindowRect(window, &rect);
        ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    MockContainer m_container;
    ComPtr<IUnknown> m_control;
};

TEST_F(ControlActivationTest, InPlaceActivationAsksTheContainerInOrder) {
    Embed();
    m_container.ForgetCalls();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    const std::vector<std::string> expected = {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindow",
                                               "GetWindowContext", "ShowObject"};
    EXPECT_EQ(expected, m_container.Calls());
    EXPECT_EQ(sizeof(OLEINPLACEFRAMEINFO), m_container.frameInfoSize);
    const HWND window = m_container.ControlWindow();
    ASSERT_TRUE(window);
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_TRUE(IsRect(CRect(10, 20, 210, 120), RectOf(window)));
    EXPECT_TRUE(::IsWindow(CTestControl::last->dialog.m_hWnd)) << "made with the window";
    m_container.ForgetCalls();
    EXPECT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_TRUE(m_container.Calls().empty()) << "active already";
}

TEST_F(ControlActivationTest, PaintGivesExactlyTheControlsBounds) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    Pump();
    ASSERT_FALSE(CTestControl::last->drawn.empty());
    EXPECT_TRUE(IsRect(CRect(0, 0, 200, 100), CTestControl::last->drawn.back()));
    EXPECT_TRUE(IsRect(CRect(0, 0, 200, 100), RectOf(CTestControl::last->dialog.m_hWnd)));
}

TEST_F(ControlActivationTest, EveryNewSizeIsDrawnAlsoWhenTheDialogCoversAll) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    Pump();
    const ComPtr<IOleInPlaceObject> inPlace = m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    for (const CRect& place : {CRect(0, 0, 300, 150), CRect(0, 0, 120, 60), CRect(5, 5, 125, 65)}) {
        CTestControl::last->drawn.clear();
        ASSERT_EQ(S_OK, inPlace->SetObjectRects(place, place));
        Pump();
        EXPECT_TRUE(IsRect(place, RectOf(m_container.ControlWindow())));
        EXPECT_EQ(CSize(RectOf(CTestControl::last->dialog.m_hWnd).right,
                        RectOf(CTestControl::last->dialog.m_hWnd).bottom),
                  place.Size());
    }
    CTestControl::last->drawn.clear();
    ::MoveWindow(m_container.ControlWindow(), 0, 0, 77, 55, TRUE); // by a host that moves the window itself
    Pump();
    ASSERT_FALSE(CTestControl::last->drawn.empty());
    EXPECT_TRUE(IsRect(CRect(0, 0, 77, 55), CTestControl::last->drawn.back()));
}

TEST_F(ControlActivationTest, ClipRectangleCutsTheWindow) {
    Embed();
    m_container.clip = {50, 20, 210, 120};
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    CRect box;
    EXPECT_EQ(SIMPLEREGION, ::GetWindowRgnBox(m_container.ControlWindow(), box));
    EXPECT_TRUE(IsRect(CRect(40, 0, 200, 100), box));
    Pump();
    const HWND dialog = CTestControl::last->dialog.m_hWnd;
    ASSERT_FALSE(::GetUpdateRect(dialog, nullptr, FALSE));
    const ComPtr<IOleInPlaceObject> inPlace = m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    ASSERT_EQ(S_OK, inPlace->SetObjectRects(&m_container.position, &m_container.position));
    EXPECT_EQ(0, ::GetWindowRgnBox(m_container.ControlWindow(), box)) << "no region";
    EXPECT_TRUE(::GetUpdateRect(dialog, nullptr, FALSE)) << "what was cut off is painted";
    EXPECT_EQ(S_OK, inPlace->SetObjectRects(&m_container.position, nullptr));
    EXPECT_EQ(E_INVALIDARG, inPlace->SetObjectRects(nullptr, nullptr));
}

TEST_F(ControlActivationTest, ARefusedUserInterfaceIsAskedForAgain) {
    Embed();
    m_container.habits.allowsUserInterface = false;
    for (int attempt = 0; attempt < 2; ++attempt) {
        m_container.ForgetCalls();
        EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, m_container.DoVerb(OLEIVERB_UIACTIVATE));
        EXPECT_TRUE(m_container.WasCalled("OnUIActivate"));
        EXPECT_FALSE(m_container.HasActiveObject());
        EXPECT_FALSE(m_container.WasCalled("OnFocus(1)"));
    }
}

TEST_F(ControlActivationTest, FocusIsNotReportedWhileTheUserInterfaceIsRefused) {
    Embed();
    m_container.habits.allowsUserInterface = false;
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    const HWND edit = ::GetDlgItem(CTestControl::last->dialog.m_hWnd, kFirstEdit);
    ::SetFocus(edit);
    ASSERT_EQ(edit, ::GetFocus());
    EXPECT_FALSE(m_container.WasCalled("OnFocus(1)"));
}

TEST_F(ControlActivationTest, FocusIsReportedOnceTheUserInterfaceIsActive) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    m_container.ForgetCalls();
    ::SetFocus(::GetDlgItem(CTestControl::last->dialog.m_hWnd, kFirstEdit));
    const std::vector<std::string>& calls = m_container.Calls();
    const auto active = std::ranges::find(calls, "OnUIActivate");
    EXPECT_NE(calls.end(), std::find(active, calls.end(), "OnFocus(1)"));
    EXPECT_EQ(1, std::ranges::count(calls, "OnFocus(1)"));
}

TEST_F(ControlActivationTest, UIActivationNamesTheActiveObjectAndDeactivationTakesItBack) {
    Embed();
    m_container.ForgetCalls();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(m_container.WasCalled("OnUIActivate"));
    EXPECT_TRUE(m_container.HasActiveObject());
    EXPECT_TRUE(m_container.WasCalled("SetBorderSpace(null)"));
    EXPECT_TRUE(m_container.WasCalled("OnFocus(1)"));
    EXPECT_TRUE(::IsChild(m_container.ControlWindow(), ::GetFocus())) << "the keyboard is in the dialog";

    const ComPtr<IOleInPlaceObject> inPlace = m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    m_container.ForgetCalls();
    EXPECT_EQ(S_OK, inPlace->UIDeactivate());
    EXPECT_FALSE(m_container.HasActiveObject());
    EXPECT_TRUE(m_container.WasCalled("OnUIDeactivate"));
    EXPECT_TRUE(m_container.ControlWindow()) << "still active in place";
    m_container.ForgetCalls();
    EXPECT_EQ(S_OK, inPlace->UIDeactivate());
    EXPECT_TRUE(m_container.Calls().empty());
    EXPECT_EQ(S_OK, inPlace->InPlaceDeactivate());
    EXPECT_TRUE(m_container.WasCalled("OnInPlaceDeactivate"));
    EXPECT_FALSE(m_container.ControlWindow());
    EXPECT_EQ(S_OK, inPlace->InPlaceDeactivate());
    EXPECT_EQ(INPLACE_E_NOTUNDOABLE, inPlace->ReactivateAndUndo());
}

TEST_F(ControlActivationTest, ReactivatesAsOftenAsTheContainerLikes) {
    Embed();
    const ComPtr<IOleInPlaceObject> inPlace = m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_PRIMARY));
        HWND window = nullptr;
        EXPECT_EQ(S_OK, inPlace->GetWindow(&window));
        EXPECT_EQ(m_container.ControlWindow(), window);
        ASSERT_EQ(S_OK, inPlace->InPlaceDeactivate());
        EXPECT_EQ(E_FAIL, inPlace->GetWindow(&window));
        EXPECT_EQ(nullptr, window);
    }
}

TEST_F(ControlActivationTest, HiddenControlIsShownAgainWithItsWindow) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    const HWND window = m_container.ControlWindow();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_HIDE));
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_FALSE(m_container.HasActiveObject());
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_EQ(window, m_container.ControlWindow());
}

TEST_F(ControlActivationTest, ContainersThatDoNotWantItAreLeftAlone) {
    m_container.habits.allowsActivation = false;
    Embed();
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(FAILED(m_container.DoVerb(OLEIVERB_SHOW)));
    EXPECT_FALSE(m_container.WasCalled("OnInPlaceActivate"));
    EXPECT_FALSE(m_container.ControlWindow());
}

TEST_F(ControlActivationTest, ContainerWithoutFrameControlSiteAndAmbientsWorks) {
    m_container.habits.hasFrame = false;
    m_container.habits.hasControlSite = false;
    m_container.habits.hasAmbients = false;
    Embed();
    EXPECT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(m_container.ControlWindow());
    Pump();
    EXPECT_FALSE(CTestControl::last->drawn.empty());
}

TEST_F(ControlActivationTest, ArgumentsOfTheVerbStandInForAContainerThatKnowsNothing) {
    m_container.habits.knowsWindow = false;
    m_container.habits.knowsContext = false;
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE));
    EXPECT_TRUE(IsRect(CRect(10, 20, 210, 120), RectOf(m_container.ControlWindow())));
    m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject)->InPlaceDeactivate();
    m_container.ForgetCalls();
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE, m_container.Object()->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr,
                                                                    &m_container, 0, nullptr, nullptr));
    EXPECT_TRUE(m_container.WasCalled("OnInPlaceDeactivate")) << "the activation that failed is taken back";
}

TEST_F(ControlActivationTest, RefusedWindowTakesTheActivationBack) {
    Embed();
    CTestControl::refuseCreation = 1;
    EXPECT_TRUE(FAILED(m_container.DoVerb(OLEIVERB_INPLACEACTIVATE)));
    EXPECT_TRUE(m_container.WasCalled("OnInPlaceDeactivate"));
    EXPECT_EQ(S_OK, m_container.DoVerb(OLEIVERB_INPLACEACTIVATE)) << "the next try may work";
}

TEST_F(ControlActivationTest, OddRectanglesAreHarmless) {
    m_container.position = {0, 0, 0, 0};
    m_container.clip = {0, 0, 0, 0};
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    const ComPtr<IOleInPlaceObject> inPlace = m_control.As<IOleInPlaceObject>(IID_IOleInPlaceObject);
    const RECT inverted = {100, 100, 50, 50};
    EXPECT_EQ(S_OK, inPlace->SetObjectRects(&inverted, &inverted));
    EXPECT_EQ(100, RectOf(m_container.ControlWindow()).left);
    const RECT huge = {-30000, -30000, 30000, 30000};
    EXPECT_EQ(S_OK, inPlace->SetObjectRects(&huge, &huge));
    Pump();
}

TEST_F(ControlActivationTest, SitelessControlIsNotActivated) {
    m_control = CreateControl();
    const ComPtr<IOleObject> object = m_control.As<IOleObject>(IID_IOleObject);
    const RECT place = {0, 0, 10, 10};
    EXPECT_EQ(OLE_E_NOT_INPLACEACTIVE,
              object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, nullptr, 0, m_container.Window(), &place));
    EXPECT_EQ(S_OK, object->DoVerb(OLEIVERB_HIDE, nullptr, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(S_OK, object->Close(OLECLOSE_NOSAVE));
    EXPECT_EQ(S_OK, object->Close(OLECLOSE_NOSAVE)) << "closed twice";
}

TEST_F(ControlActivationTest, ActiveControlMayBeReleasedOrLoseItsSiteWithoutClose) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    ASSERT_EQ(S_OK, m_container.Object()->SetClientSite(nullptr));
    EXPECT_FALSE(m_container.ControlWindow());
    EXPECT_TRUE(m_container.WasCalled("OnInPlaceDeactivate"));
    ASSERT_EQ(S_OK, m_container.Object()->SetClientSite(&m_container));
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
    m_control.Reset();
    m_container.Object()->AddRef();
    IOleObject* object = m_container.Object();
    m_container.Remove();
    object->Release();
    EXPECT_FALSE(m_container.ControlWindow());
}

TEST_F(ControlActivationTest, ControlReleasedInsideAHandlerLivesUntilItsEnd) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    TestDialog& dialog = CTestControl::last->dialog;
    bool alive = false;
    dialog.onSave = [&] {
        m_container.Remove();
        m_control.Reset();
        alive = CTestControl::last != nullptr;
        EXPECT_FALSE(m_container.ControlWindow()) << "the window is gone at once";
        EXPECT_EQ(S_FALSE, AfxDllCanUnloadNow());
    };
    ::SendMessage(::GetDlgItem(dialog.m_hWnd, kSaveButton), BM_CLICK, 0, 0);
    EXPECT_TRUE(alive);
    EXPECT_EQ(nullptr, CTestControl::last);
}

TEST_F(ControlActivationTest, WindowDestroyedWithItsContainerIsMadeAgain) {
    Embed();
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    ::DestroyWindow(m_container.ControlWindow());
    EXPECT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    EXPECT_TRUE(m_container.ControlWindow());
}

TEST_F(ControlActivationTest, CyclesLeaveNoDrawingObjects) {
    constexpr int kWarm = 20;
    constexpr int kCycles = 120;
    int warm = 0;
    for (int cycle = 0; cycle < kCycles; ++cycle) {
        Embed();
        m_container.clip = {50, 20, 210, 120};
        ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_UIACTIVATE));
        m_container.DoVerb(OLEIVERB_HIDE);
        m_container.DoVerb(OLEIVERB_SHOW);
        Pump();
        m_container.Remove();
        m_control.Reset();
        if (cycle == kWarm) {
            warm = GdiObjectCount();
        }
    }
    EXPECT_LE(GdiObjectCount(), warm);
    EXPECT_GT(warm, 0);
}

TEST_F(ControlActivationTest, NewExtentAsksAnActiveContainerForRoom) {
    Embed();
    SIZEL extent = {2540, 5080};
    ASSERT_EQ(S_OK, m_container.Object()->SetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_FALSE(m_container.WasCalled("OnPosRectChange")) << "not active";
    ASSERT_EQ(S_OK, m_container.DoVerb(OLEIVERB_SHOW));
    ASSERT_EQ(S_OK, m_container.Object()->SetExtent(DVASPECT_CONTENT, &extent));
    ASSERT_TRUE(m_container.WasCalled("OnPosRectChange"));
    const RECT asked = m_container.AskedPosition();
    EXPECT_EQ(10, asked.left);
    EXPECT_EQ(20, asked.top);
    EXPECT_EQ(2 * (asked.right - asked.left), asked.bottom - asked.top);
}

} // namespace
