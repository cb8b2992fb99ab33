// The control deactivated and closed, in any order and inside its own calls.
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

namespace {

using DeactivationTest = EmbeddedControlTest;

} // namespace

TEST_F(DeactivationTest, DeactivatesInAnyOrderAndComesBack) {
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(S_OK, InPlace()->UIDeactivate());
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
        ASSERT_EQ(S_OK, Activate(round % 2 ? OLEIVERB_UIACTIVATE : OLEIVERB_INPLACEACTIVATE));
        EXPECT_TRUE(Dialog());
        if (round % 3) {
            EXPECT_EQ(S_OK, InPlace()->UIDeactivate());
        }
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
        EXPECT_EQ(S_OK, InPlace()->InPlaceDeactivate());
        EXPECT_FALSE(container.ControlWindow());
    }
}

TEST_F(DeactivationTest, ClosesTwiceAndLoadsInEveryState) {
    const PackageBuilder package;
    EXPECT_EQ(S_OK, Load(package.Path()));
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
        EXPECT_EQ(S_OK, Load(package.Path()));
        Pump();
        EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
        EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
        EXPECT_FALSE(container.ControlWindow());
        EXPECT_EQ(S_OK, Load(package.Path()));
    }
}

TEST_F(DeactivationTest, ClosingSavesOnlyWhatIsModified) {
    ASSERT_EQ(S_OK, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->InitNew());
    ASSERT_EQ(S_OK, Activate());
    EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_FALSE(container.WasCalled("SaveObject"));
    Value text(L"");
    Invoke(Automation(control.Get()).Get(), kInputParameter, DISPATCH_PROPERTYPUT, {text.Get()});
    EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_NOSAVE));
    EXPECT_FALSE(container.WasCalled("SaveObject"));
    EXPECT_EQ(S_OK, container.Object()->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_TRUE(container.WasCalled("SaveObject"));
}

TEST_F(DeactivationTest, ContainerMayCloseOrReleaseInsideEveryCallThatItGets) {
    const std::vector<std::string> moments = {
        "CanInPlaceActivate", "OnInPlaceActivate", "GetWindow",           "GetWindowContext",
        "ShowObject",         "OnUIActivate",      "SetActiveObject",     "SetBorderSpace(null)",
        "OnFocus(1)",         "OnUIDeactivate",    "OnInPlaceDeactivate", "SetActiveObject(null)",
        "OnFocus(0)"};
    control.Reset(); // no object but those of the test
    for (const std::string& moment : moments) {
        MockContainer other;
        auto another = CreateControl();
        IOleObject* const object = As<IOleObject>(another.Get(), IID_IOleObject).Detach();
        object->SetClientSite(&other);
        another.Reset();
        bool done = false;
        other.onCall = [&](const std::string& name) {
            if (name == moment && !done) {
                done = true;
                object->Close(OLECLOSE_NOSAVE);
                object->SetClientSite(nullptr);
                object->Release();
            }
        };
        object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &other, 0, other.Window(), &other.position);
        if (!done) {
            object->Close(OLECLOSE_NOSAVE);
        }
        EXPECT_TRUE(done) << moment;
        Pump();
        EXPECT_FALSE(other.ControlWindow()) << moment;
        EXPECT_EQ(1, other.References()) << moment;
        EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow")) << moment;
        other.onCall = nullptr;
    }
}

TEST_F(DeactivationTest, ContainersWindowMayGoUnannounced) {
    ASSERT_EQ(S_OK, Activate(OLEIVERB_UIACTIVATE));
    DestroyWindow(container.ControlWindow());
    EXPECT_EQ(S_OK, Activate(OLEIVERB_SHOW));
    EXPECT_TRUE(Dialog());
    DestroyWindow(container.Window());
    Pump();
    Value number(1L);
    EXPECT_EQ(S_OK, Invoke(Automation(control.Get()).Get(), kOnSizeChange, DISPATCH_METHOD,
                           {number.Get(), number.Get()}));
    EXPECT_EQ(S_OK, Invoke(Automation(control.Get()).Get(), kClose, DISPATCH_METHOD));
}
