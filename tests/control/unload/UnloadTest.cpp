// The module's end and return. A program of its own, in which nothing else has used the module.
#include "ControlObject.h"
#include "MockContainer.h"
#include "PackageBuilder.h"

#include <commctrl.h>

namespace {

constexpr wchar_t kModule[] = L"MXOVDocViewCtrl.ocx";

/// A control made past the registry, so that the system holds no reference to the module.
ComPtr<IDispatch> CreateFrom(const ControlModule& module) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(module.Handle(), "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> control;
    EXPECT_EQ(S_OK, get(kControlClass, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())));
    EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IDispatch,
                                            reinterpret_cast<void**>(control.GetAddressOf())));
    return control;
}

void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// Shows a package in a container, with the properties of its part when `popup` is set.
void ShowPackage(IDispatch* control, bool popup) {
    const PackageBuilder package;
    MockContainer container;
    container.Embed(control);
    ASSERT_EQ(S_OK, container.DoVerb(OLEIVERB_UIACTIVATE));
    Value folder(package.Path());
    EXPECT_EQ(S_OK, Invoke(control, kInputParameter, DISPATCH_PROPERTYPUT, {folder.Get()}));
    HandleMessages();
    if (popup) {
        const HWND dialog = FindWindowExW(container.ControlWindow(), nullptr, L"#32770", nullptr);
        LVITEMW state = {};
        state.stateMask = state.state = LVIS_SELECTED;
        SendDlgItemMessageW(dialog, kPartList, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&state));
        NMHDR header = {GetDlgItem(dialog, kPartList), kPartList, NM_CLICK};
        SendMessageW(dialog, WM_NOTIFY, kPartList, reinterpret_cast<LPARAM>(&header));
        EXPECT_TRUE(FindWindowW(nullptr, L"Document Properties"));
    }
    container.Remove();
    HandleMessages();
}

} // namespace

TEST(UnloadTest, GoesAndIsLoadedAgain) {
    constexpr int kRounds = 20;
    ASSERT_EQ(S_OK, OleInitialize(nullptr));
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_EQ(nullptr, GetModuleHandleW(kModule)) << round;
        {
            const ControlModule module;
            const auto automation = CreateFrom(module);
            Value text(L"Q:\\nowhere");
            EXPECT_EQ(S_OK, Invoke(automation.Get(), kInputParameter, DISPATCH_PROPERTYPUT, {text.Get()}));
            EXPECT_EQ(L"Q:\\nowhere", InputParameter(automation.Get()));
        }
    }
    OleUninitialize();
}

TEST(UnloadTest, GoesAfterItsWindowsWereShown) {
    constexpr int kRounds = 5;
    ASSERT_EQ(S_OK, OleInitialize(nullptr));
    for (int round = 0; round < kRounds; ++round) {
        {
            const ControlModule module;
            ShowPackage(CreateFrom(module).Get(), false);
            EXPECT_EQ(S_OK, module.Call("DllCanUnloadNow"));
        }
        EXPECT_EQ(nullptr, GetModuleHandleW(kModule)) << round;
    }
    OleUninitialize();
}

// The last of this program: the module stays from now on.
TEST(UnloadTest, StaysForItsHooksOnceThePopupWasShown) {
    ASSERT_EQ(S_OK, OleInitialize(nullptr));
    {
        const ControlModule module;
        ShowPackage(CreateFrom(module).Get(), true);
        EXPECT_EQ(S_OK, module.Call("DllCanUnloadNow"));
    }
    EXPECT_NE(nullptr, GetModuleHandleW(kModule));
    const ControlModule again;
    EXPECT_TRUE(CreateFrom(again)) << "and can be used on";
    OleUninitialize();
}
