// The fixture of the tests that put the control into a container.
#pragma once

#include "ControlObject.h"
#include "MockContainer.h"

/// A control and a container for it; at the end nothing may be left of either.
class EmbeddedControlTest : public ControlObjectTest {
protected:
    EmbeddedControlTest() : control(CreateControl()) {}

    void TearDown() override {
        container.onCall = nullptr;
        container.Remove();
        control.Reset();
        EXPECT_EQ(1, container.References());
        ControlObjectTest::TearDown();
    }

    HRESULT Activate(LONG verb = OLEIVERB_INPLACEACTIVATE) {
        if (!container.Object()) {
            container.Embed(control.Get());
        }
        return container.DoVerb(verb);
    }

    [[nodiscard]] HWND Dialog() const {
        const HWND window = container.ControlWindow();
        return window ? FindWindowExW(window, nullptr, L"#32770", nullptr) : nullptr;
    }
    /// A control of the dialog.
    [[nodiscard]] HWND Item(int id) const { return GetDlgItem(Dialog(), id); }

    ComPtr<IOleInPlaceObject> InPlace() {
        return As<IOleInPlaceObject>(control.Get(), IID_IOleInPlaceObject);
    }
    ComPtr<IViewObject2> View() { return As<IViewObject2>(control.Get(), IID_IViewObject2); }

    /// `file`: the package file; empty when it does not matter.
    HRESULT Load(const std::wstring& folder, const std::wstring& file = L"") {
        Value path(folder);
        Value package(file);
        return Invoke(Automation(control.Get()).Get(), kLoadFile, DISPATCH_METHOD,
                      {path.Get(), package.Get()});
    }

    MockContainer container;
    ComPtr<IUnknown> control;
};
