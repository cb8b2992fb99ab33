// The fixture of the tests that call the control through IDispatch.
#pragma once

#include "ControlObject.h"

inline constexpr WORD kMethod = DISPATCH_METHOD;
inline constexpr WORD kGet = DISPATCH_PROPERTYGET;
inline constexpr WORD kPut = DISPATCH_PROPERTYPUT;

/// A control and its automation interface.
class AutomationClientTest : public ControlObjectTest {
protected:
    AutomationClientTest() : control(CreateControl()), automation(Automation(control.Get())) {}

    void TearDown() override {
        automation.Reset();
        control.Reset();
        ControlObjectTest::TearDown();
    }

    HRESULT Put(VARIANT value) { return Invoke(automation.Get(), kInputParameter, kPut, {value}); }
    HRESULT Resize(VARIANT cx, VARIANT cy) {
        return Invoke(automation.Get(), kOnSizeChange, kMethod, {cx, cy});
    }
    HRESULT Load(VARIANT folder, VARIANT file) {
        return Invoke(automation.Get(), kLoadFile, kMethod, {folder, file});
    }

    /// A type information of the primary interface, from the library itself.
    ComPtr<ITypeInfo> Declaration() {
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(S_OK, automation->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info));
        return info;
    }

    ComPtr<IUnknown> control;
    ComPtr<IDispatch> automation;
};
