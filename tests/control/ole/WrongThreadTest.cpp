// Calls from a thread that the control does not belong to: refused, and nothing is changed or disclosed.
#include "AutomationClient.h"

#include <thread>

using WrongThreadTest = AutomationClientTest;

TEST_F(WrongThreadTest, CallsFromAnotherThreadAreRefused) {
    std::thread([&] {
        wchar_t name[] = L"Close";
        LPOLESTR names[] = {name};
        DISPID id = 0;
        EXPECT_EQ(RPC_E_WRONG_THREAD, automation->GetIDsOfNames(IID_NULL, names, 1, 0, &id));
        Value folder(L"Q:\\nowhere\\");
        for (const DISPID member : {Member(kClearAllData), kClose, kAboutBox}) {
            EXPECT_EQ(RPC_E_WRONG_THREAD, Invoke(automation.Get(), member, kMethod));
        }
        EXPECT_EQ(RPC_E_WRONG_THREAD, Put(folder.Get()));
        Value read;
        EXPECT_EQ(RPC_E_WRONG_THREAD, Invoke(automation.Get(), kInputParameter, kGet, {}, &read.Get()));
        UINT count = 0;
        EXPECT_EQ(RPC_E_WRONG_THREAD, automation->GetTypeInfoCount(&count));
        EXPECT_EQ(RPC_E_WRONG_THREAD, Load(folder.Get(), folder.Get()));
        const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->Close(OLECLOSE_NOSAVE));
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->SetClientSite(nullptr));
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, GetDesktopWindow(), nullptr));
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->InitNew());
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IOleInPlaceObject>(control.Get(), IID_IOleInPlaceObject)->InPlaceDeactivate());
    }).join();
    EXPECT_EQ(L"", InputParameter(automation.Get())) << "nothing was changed";
}

TEST_F(WrongThreadTest, EarlyBoundCallsFromAnotherThreadAreRefused) {
    const auto declaration = Declaration();
    ASSERT_TRUE(declaration);
    std::thread([&] {
        Value text(L"Q:\\early");
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS value = {&text.Get(), &put, 1, 1};
        DISPPARAMS none = {};
        Value read;
        EXPECT_EQ(RPC_E_WRONG_THREAD, declaration->Invoke(automation.Get(), kInputParameter, kPut, &value,
                                                          nullptr, nullptr, nullptr));
        EXPECT_EQ(RPC_E_WRONG_THREAD, declaration->Invoke(automation.Get(), kInputParameter, kGet, &none,
                                                          &read.Get(), nullptr, nullptr));
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  declaration->Invoke(automation.Get(), kClose, kMethod, &none, nullptr, nullptr, nullptr));
    }).join();
    EXPECT_EQ(L"", InputParameter(automation.Get()));
}

TEST_F(WrongThreadTest, WhatTheObjectHoldsIsNotToldToAnotherThread) {
    std::thread([&] {
        const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
        IOleClientSite* site = nullptr;
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->GetClientSite(&site));
        SIZEL size = {};
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->GetExtent(DVASPECT_CONTENT, &size));
        HWND window = nullptr;
        for (const IID* iid : {&IID_IOleInPlaceObject, &IID_IOleInPlaceActiveObject}) {
            EXPECT_EQ(RPC_E_WRONG_THREAD, As<IOleWindow>(control.Get(), *iid)->GetWindow(&window));
        }
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IViewObject>(control.Get(), IID_IViewObject)->GetAdvise(nullptr, nullptr, nullptr));
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->IsDirty());
        EXPECT_EQ(RPC_E_WRONG_THREAD, As<IPersistStorage>(control.Get(), IID_IPersistStorage)->IsDirty());
        EXPECT_EQ(RPC_E_WRONG_THREAD, As<IPersistMemory>(control.Get(), IID_IPersistMemory)->IsDirty());
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IConnectionPointContainer>(control.Get(), IID_IConnectionPointContainer)
                      ->FindConnectionPoint(kEventInterface, &point));
        DWORD status = 0;
        EXPECT_EQ(S_OK, object->GetMiscStatus(DVASPECT_CONTENT, &status)) << "the same for every object";
    }).join();
}
