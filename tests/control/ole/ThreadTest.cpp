// Threads: the control belongs to one, and the others do no harm.
#include "ControlClient.h"
#include "EmbeddedControl.h"
#include "PackageBuilder.h"

#include <thread>

namespace {

using ThreadTest = EmbeddedControlTest;

HRESULT Create(ComPtr<IUnknown>& control) {
    return CoCreateInstance(kControlClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                            reinterpret_cast<void**>(control.ReleaseAndGetAddressOf()));
}

/// What a host does with a control, from its creation to its end.
HRESULT UseControl(const std::wstring& folder) {
    ComPtr<IUnknown> control;
    const HRESULT created = Create(control);
    if (FAILED(created)) {
        EXPECT_FALSE(control);
        return created;
    }
    MockContainer container;
    container.Embed(control.Get());
    EXPECT_EQ(S_OK, container.DoVerb(OLEIVERB_UIACTIVATE));
    ComPtr<IDispatch> automation;
    control.As(&automation);
    Value path(folder);
    EXPECT_EQ(S_OK, Invoke(automation.Get(), kInputParameter, DISPATCH_PROPERTYPUT, {path.Get()}));
    ComPtr<ITypeInfo> type;
    EXPECT_EQ(S_OK, automation->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type));
    container.Remove();
    return created;
}

} // namespace

TEST_F(ThreadTest, SecondApartmentIsRefusedUntilTheObjectsOfTheFirstAreGone) {
    const auto createElsewhere = [] {
        HRESULT result = S_OK;
        std::thread([&] {
            const ComApartment apartment;
            ComPtr<IUnknown> second;
            result = Create(second);
            EXPECT_EQ(SUCCEEDED(result), second != nullptr);
        }).join();
        return result;
    };
    EXPECT_EQ(RPC_E_WRONG_THREAD, createElsewhere());
    auto another = CreateControl();
    control.Reset();
    EXPECT_EQ(RPC_E_WRONG_THREAD, createElsewhere()) << "one is left";
    another.Reset();
    EXPECT_EQ(S_OK, createElsewhere());
    EXPECT_TRUE(CreateControl()) << "and the first again";
}

TEST_F(ThreadTest, TwoThreadsThatBothWantControlsDoNoHarm) {
    constexpr int kRounds = 10;
    const PackageBuilder package;
    control.Reset();
    const auto use = [&] {
        const ComApartment apartment;
        for (int round = 0; round < kRounds; ++round) {
            const HRESULT used = UseControl(package.Path());
            EXPECT_TRUE(used == S_OK || used == RPC_E_WRONG_THREAD) << used;
        }
    };
    std::thread first(use);
    std::thread second(use);
    first.join();
    second.join();
    EXPECT_EQ(S_OK, UseControl(package.Path())) << "nothing of either is left";
}

TEST_F(ThreadTest, LastReleaseOnAWrongThreadDoesNoHarm) {
    IUnknown* last = control.Detach();
    std::thread([=] { last->Release(); }).join();
    EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow")) << "destroyed by its own thread";
}

TEST_F(ThreadTest, ActiveControlReleasedOnAWrongThreadGoesWithItsWindow) {
    auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    control.Reset();
    ASSERT_EQ(S_OK, object->SetClientSite(&container));
    ASSERT_EQ(S_OK, object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container, 0, container.Window(),
                                   &container.position));
    const HWND window = container.ControlWindow();
    std::thread([last = object.Detach()] { last->Release(); }).join();
    SendMessageW(window, WM_NULL, 0, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(1, container.References());
}

TEST_F(ThreadTest, RefusedCallsClearTheirResults) {
    void* const garbage = this;
    std::thread([&] {
        const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
        auto* site = static_cast<IOleClientSite*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->GetClientSite(&site));
        EXPECT_EQ(nullptr, site);
        auto* type = static_cast<wchar_t*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->GetUserType(USERCLASSTYPE_FULL, &type));
        EXPECT_EQ(nullptr, type);
        auto* verbs = static_cast<IEnumOLEVERB*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->EnumVerbs(&verbs));
        EXPECT_EQ(nullptr, verbs);
        DWORD connection = 5;
        MockSink sink;
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->Advise(&sink, &connection));
        EXPECT_EQ(0U, connection);
        SIZEL size = {5, 5};
        EXPECT_EQ(RPC_E_WRONG_THREAD, object->GetExtent(DVASPECT_CONTENT, &size));
        EXPECT_EQ(0, size.cx);
        auto* window = static_cast<HWND>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IOleWindow>(control.Get(), IID_IOleInPlaceObject)->GetWindow(&window));
        EXPECT_EQ(nullptr, window);
        auto* point = static_cast<IConnectionPoint*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IConnectionPointContainer>(control.Get(), IID_IConnectionPointContainer)
                      ->FindConnectionPoint(kEventInterface, &point));
        EXPECT_EQ(nullptr, point);
        DWORD aspects = 5;
        auto* view = static_cast<IAdviseSink*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IViewObject>(control.Get(), IID_IViewObject)->GetAdvise(&aspects, nullptr, &view));
        EXPECT_EQ(0U, aspects);
        EXPECT_EQ(nullptr, view);
        FORMATETC format = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
        STGMEDIUM medium = {TYMED_ENHMF, {}, static_cast<IUnknown*>(garbage)};
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  As<IDataObject>(control.Get(), IID_IDataObject)->GetData(&format, &medium));
        EXPECT_EQ(nullptr, medium.pUnkForRelease);
        CONTROLINFO info = {sizeof info, static_cast<HACCEL>(garbage), 5, 0};
        EXPECT_EQ(RPC_E_WRONG_THREAD, As<IOleControl>(control.Get(), IID_IOleControl)->GetControlInfo(&info));
        EXPECT_EQ(nullptr, info.hAccel);
        EXPECT_EQ(0, info.cAccel);
        const auto automation = Automation(control.Get());
        auto* typeInfo = static_cast<ITypeInfo*>(garbage);
        EXPECT_EQ(RPC_E_WRONG_THREAD, automation->GetTypeInfo(0, 0, &typeInfo));
        EXPECT_EQ(nullptr, typeInfo);
        VARIANT result = {};
        result.vt = VT_UNKNOWN;
        EXPECT_EQ(RPC_E_WRONG_THREAD,
                  Invoke(automation.Get(), kInputParameter, DISPATCH_PROPERTYGET, {}, &result));
        EXPECT_EQ(VT_EMPTY, result.vt);
    }).join();
}
