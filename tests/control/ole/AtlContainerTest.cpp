// The control in the system's ATL container, made in each of the container's ways.
#include "ControlObject.h"
#include "MockContainer.h"
#include "PackageBuilder.h"

#include <commctrl.h>

// Documented in the ATL reference; no header of this tool chain declares them.
extern "C" {
BOOL WINAPI AtlAxWinInit();
HRESULT WINAPI AtlAxGetControl(HWND window, IUnknown** control);
HRESULT WINAPI AtlAxCreateControl(LPCOLESTR name, HWND window, IStream* state, IUnknown** container);
HRESULT WINAPI AtlAxCreateControlEx(LPCOLESTR name, HWND window, IStream* state, IUnknown** container,
                                    IUnknown** control, REFIID events, IUnknown* sink);
HRESULT WINAPI AtlAxAttachControl(IUnknown* control, HWND window, IUnknown** container);
HRESULT WINAPI AtlAdvise(IUnknown* source, IUnknown* sink, const IID* events, DWORD* cookie);
HRESULT WINAPI AtlUnadvise(IUnknown* source, const IID* events, DWORD cookie);
HRESULT WINAPI AtlGetObjectSourceInterface(IUnknown* object, GUID* library, IID* events,
                                           unsigned short* major, unsigned short* minor);
}

namespace {

constexpr wchar_t kProgId[] = L"MXOVTREETAB.MXOVDocViewCtrlVS2015.13";
constexpr wchar_t kClassText[] = L"{6406FF95-0F04-4382-852B-89E0979EAEE8}";

class AtlContainerTest : public ControlObjectTest {
protected:
    AtlContainerTest() { AtlAxWinInit(); }

    void TearDown() override {
        DestroyWindow(window);
        ControlObjectTest::TearDown();
    }

    /// A window of a class; the container's own makes the control that its text names.
    void MakeWindow(const wchar_t* className, const wchar_t* text) {
        window = CreateWindowExW(0, className, text, WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 50, 50, 420,
                                 560, nullptr, nullptr, nullptr, nullptr);
        ASSERT_TRUE(window);
    }

    /// The control is there, loads a package and shows it over the window's whole area.
    void ExpectWorks(IUnknown* control) {
        ASSERT_TRUE(control);
        const PackageBuilder package;
        Value folder(package.Path());
        EXPECT_EQ(S_OK,
                  Invoke(Automation(control).Get(), kInputParameter, DISPATCH_PROPERTYPUT, {folder.Get()}));
        Pump();
        const HWND dialog = FindWindowExW(GetWindow(window, GW_CHILD), nullptr, L"#32770", nullptr);
        ASSERT_TRUE(dialog);
        EXPECT_TRUE(IsWindowVisible(dialog));
        EXPECT_EQ(3, SendDlgItemMessageW(dialog, kAdditionalList, LVM_GETITEMCOUNT, 0, 0));
        RECT area = {};
        RECT shown = {};
        GetClientRect(window, &area);
        GetClientRect(dialog, &shown);
        EXPECT_TRUE(EqualRect(&area, &shown));
    }

    ComPtr<IUnknown> ControlOfWindow() const {
        ComPtr<IUnknown> control;
        EXPECT_EQ(S_OK, AtlAxGetControl(window, &control));
        return control;
    }

    HWND window = nullptr;
};

} // namespace

TEST_F(AtlContainerTest, WindowClassMakesItByProgIdAndByClass) {
    for (const wchar_t* name : {kProgId, kClassText}) {
        MakeWindow(L"AtlAxWin", name);
        ExpectWorks(ControlOfWindow().Get());
        DestroyWindow(window);
        EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow")) << "the control goes with the window";
    }
}

TEST_F(AtlContainerTest, AnyWindowBecomesItsContainer) {
    MakeWindow(L"STATIC", L"");
    ComPtr<IUnknown> host;
    ASSERT_EQ(S_OK, AtlAxCreateControl(kProgId, window, nullptr, &host));
    EXPECT_TRUE(host);
    ExpectWorks(ControlOfWindow().Get());
}

TEST_F(AtlContainerTest, IsMadeWithAdviceOfItsEvents) {
    MockSink sink(kEventInterface);
    MakeWindow(L"STATIC", L"");
    {
        ComPtr<IUnknown> host;
        ComPtr<IUnknown> control;
        ASSERT_EQ(S_OK, AtlAxCreateControlEx(kProgId, window, nullptr, &host, &control, kEventInterface,
                                             static_cast<IDispatch*>(&sink)));
        ExpectWorks(control.Get());
    }
    DestroyWindow(window);
    EXPECT_EQ(1, sink.References());
    EXPECT_EQ(std::vector<std::string>{}, sink.calls);
}

TEST_F(AtlContainerTest, TakesAControlThatExists) {
    MakeWindow(L"STATIC", L"");
    ComPtr<IUnknown> control = CreateControl();
    ComPtr<IUnknown> host;
    ASSERT_EQ(S_OK, AtlAxAttachControl(control.Get(), window, &host));
    ExpectWorks(control.Get());
}

TEST_F(AtlContainerTest, TellsItsEventsAndConnectsTheirSink) {
    const ComPtr<IUnknown> control = CreateControl();
    GUID library = {};
    IID events = {};
    unsigned short major = 0;
    unsigned short minor = 9;
    ASSERT_EQ(S_OK, AtlGetObjectSourceInterface(control.Get(), &library, &events, &major, &minor));
    EXPECT_EQ(kTypeLibrary, library);
    EXPECT_EQ(kEventInterface, events);
    EXPECT_EQ(1, major);
    EXPECT_EQ(0, minor);
    MockSink sink(kEventInterface);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, AtlAdvise(control.Get(), static_cast<IDispatch*>(&sink), &events, &cookie));
    EXPECT_LT(1, sink.References());
    EXPECT_EQ(S_OK, AtlUnadvise(control.Get(), &events, cookie));
    EXPECT_EQ(1, sink.References());
}
