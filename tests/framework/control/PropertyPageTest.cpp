#include "OleTestControl.h"

namespace {

/// A page site that notes its calls.
class PageSite final : public IPropertyPageSite {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IPropertyPageSite ? this : nullptr;
        if (*object) {
            AddRef();
        }
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
    STDMETHODIMP OnStatusChange(DWORD flags) override {
        status = flags;
        return S_OK;
    }
    STDMETHODIMP GetLocaleID(LCID* locale) override {
        *locale = 0;
        return S_OK;
    }
    STDMETHODIMP GetPageContainer(IUnknown** container) override {
        *container = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP TranslateAccelerator(MSG*) override {
        ++keys;
        return answer;
    }

    LONG references = 1;
    DWORD status = 0;
    int keys = 0;
    HRESULT answer = S_FALSE; ///< to keys
};

class PropertyPageTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_frame = ::CreateWindowEx(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr,
                                   nullptr, nullptr);
        m_page = Create(CTestPage::guid).As<IPropertyPage2>(IID_IPropertyPage2);
        m_control = CreateControl();
    }
    void TearDown() override {
        m_page.Reset();
        m_control.Reset();
        EXPECT_EQ(1, m_site.references);
        ::DestroyWindow(m_frame);
        OleTest::TearDown();
    }
    HWND Edit() const { return ::GetDlgItem(::GetWindow(m_frame, GW_CHILD), kPageEdit); }
    CString EditText() const {
        wchar_t text[100]{};
        ::GetWindowText(Edit(), text, 100);
        return text;
    }

    HWND m_frame = nullptr;
    PageSite m_site;
    ComPtr<IPropertyPage2> m_page;
    ComPtr<IUnknown> m_control;
};

TEST_F(PropertyPageTest, TellsTitleAndSizeWithoutAWindow) {
    PROPPAGEINFO info{};
    info.cb = sizeof(info);
    ASSERT_EQ(S_OK, m_page->GetPageInfo(&info));
    EXPECT_STREQ(L"Details", info.pszTitle);
    RECT expected = {0, 0, 150, 50};
    const RECT place = {0, 0, 10, 10};
    ASSERT_EQ(S_OK, m_page->Activate(m_frame, &place, FALSE));
    ::MapDialogRect(::GetWindow(m_frame, GW_CHILD), &expected);
    EXPECT_EQ(expected.right, info.size.cx);
    EXPECT_EQ(expected.bottom, info.size.cy);
    ::CoTaskMemFree(info.pszTitle);
    EXPECT_EQ(S_OK, m_page->Deactivate());
}

TEST_F(PropertyPageTest, LivesInTheFrameAsLongAsItIsActive) {
    EXPECT_EQ(S_OK, m_page->SetPageSite(&m_site));
    EXPECT_EQ(E_UNEXPECTED, m_page->SetPageSite(&m_site)) << "in a frame already";
    EXPECT_EQ(E_UNEXPECTED, m_page->Show(SW_SHOW));
    EXPECT_EQ(E_UNEXPECTED, m_page->Deactivate());
    const RECT place = {10, 20, 110, 90};
    EXPECT_EQ(E_POINTER, m_page->Activate(m_frame, nullptr, FALSE));
    ASSERT_EQ(S_OK, m_page->Activate(m_frame, &place, TRUE));
    EXPECT_EQ(E_UNEXPECTED, m_page->Activate(m_frame, &place, TRUE));
    const HWND window = ::GetWindow(m_frame, GW_CHILD);
    RECT shown{};
    ::GetWindowRect(window, &shown);
    ::MapWindowPoints(nullptr, m_frame, reinterpret_cast<POINT*>(&shown), 2);
    EXPECT_TRUE(CRect(place) == shown);
    EXPECT_EQ(S_OK, m_page->Show(SW_SHOW));
    EXPECT_TRUE(::IsWindowVisible(window));
    const RECT moved = {0, 0, 50, 50};
    EXPECT_EQ(S_OK, m_page->Move(&moved));
    EXPECT_EQ(S_OK, m_page->Show(SW_HIDE));
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_EQ(S_OK, m_page->Deactivate());
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(S_OK, m_page->SetPageSite(nullptr));
}

TEST_F(PropertyPageTest, ShowsAndAppliesAProperty) {
    CTestControl::last->caption = L"before";
    IUnknown* objects[] = {m_control.Get()};
    ASSERT_EQ(S_OK, m_page->SetPageSite(&m_site));
    ASSERT_EQ(S_OK, m_page->SetObjects(1, objects));
    const RECT place = {0, 0, 100, 90};
    ASSERT_EQ(S_OK, m_page->Activate(m_frame, &place, FALSE));
    EXPECT_EQ(CString(L"before"), EditText());
    EXPECT_EQ(S_FALSE, m_page->IsPageDirty());
    ::SendMessage(Edit(), EM_SETSEL, 0, -1);
    ::SendMessage(Edit(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"after"));
    EXPECT_EQ(S_OK, m_page->IsPageDirty());
    EXPECT_EQ(static_cast<DWORD>(PROPPAGESTATUS_DIRTY), m_site.status);
    EXPECT_EQ(CString(L"before"), CTestControl::last->caption);
    EXPECT_EQ(S_OK, m_page->Apply());
    EXPECT_EQ(CString(L"after"), CTestControl::last->caption);
    EXPECT_EQ(S_FALSE, m_page->IsPageDirty());
    EXPECT_EQ(S_OK, m_page->Deactivate());
    EXPECT_EQ(S_OK, m_page->SetObjects(0, nullptr));
    EXPECT_EQ(S_OK, m_page->SetPageSite(nullptr));
}

TEST_F(PropertyPageTest, ShowsTheObjectsThatItGetsWhileItIsActive) {
    const RECT place = {0, 0, 100, 90};
    ASSERT_EQ(S_OK, m_page->Activate(m_frame, &place, FALSE));
    CTestControl::last->caption = L"late";
    IUnknown* objects[] = {m_control.Get()};
    ASSERT_EQ(S_OK, m_page->SetObjects(1, objects));
    EXPECT_EQ(CString(L"late"), EditText());
    EXPECT_EQ(S_OK, m_page->Deactivate());
    EXPECT_EQ(S_OK, m_page->SetObjects(0, nullptr));
}

TEST_F(PropertyPageTest, KeysGoToItsControlsAndThenToTheFrame) {
    const RECT place = {0, 0, 100, 90};
    ASSERT_EQ(S_OK, m_page->Activate(m_frame, &place, FALSE));
    ASSERT_EQ(S_OK, m_page->Show(SW_SHOW));
    MSG arrow = {Edit(), WM_KEYDOWN, VK_LEFT, 1, 0, {}};
    MSG tab = {Edit(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_EQ(S_FALSE, m_page->TranslateAccelerator(&tab)) << "no frame wants it";
    ASSERT_EQ(S_OK, m_page->SetPageSite(&m_site));
    EXPECT_EQ(S_OK, m_page->TranslateAccelerator(&arrow));
    EXPECT_EQ(0, m_site.keys);
    EXPECT_EQ(S_FALSE, m_page->TranslateAccelerator(&tab)) << "past its last control";
    EXPECT_EQ(1, m_site.keys);
    m_site.answer = S_OK;
    EXPECT_EQ(S_OK, m_page->TranslateAccelerator(&tab));
    EXPECT_EQ(E_POINTER, m_page->TranslateAccelerator(nullptr));
    EXPECT_EQ(S_OK, m_page->Deactivate());
    EXPECT_EQ(S_OK, m_page->SetPageSite(nullptr));
}

TEST_F(PropertyPageTest, WhatItDoesNotHaveIsAnsweredAsDocumented) {
    EXPECT_EQ(E_NOTIMPL, m_page->EditProperty(1));
    EXPECT_EQ(E_NOTIMPL, m_page->Help(nullptr));
    EXPECT_EQ(E_UNEXPECTED, m_page->Apply());
    const RECT place = {0, 0, 100, 90};
    EXPECT_EQ(E_UNEXPECTED, m_page->Move(&place));
    EXPECT_EQ(E_POINTER, m_page->Move(nullptr));
    MockSink unscriptable;
    IUnknown* objects[] = {nullptr};
    EXPECT_EQ(E_NOINTERFACE, m_page->SetObjects(1, objects));
    EXPECT_EQ(E_POINTER, m_page->SetObjects(1, nullptr));
}

TEST_F(PropertyPageTest, TheSystemsFrameShowsIt) {
    const PrivateClassesRoot root;
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(TRUE));
    DWORD cookie = 0;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestPage::guid, IID_IClassFactory, factory.ReceiveVoid()));
    ASSERT_EQ(S_OK, ::CoRegisterClassObject(CTestPage::guid, factory.Get(), CLSCTX_INPROC_SERVER,
                                            REGCLS_MULTIPLEUSE, &cookie));
    // Ends the modal frame from its own message loop, and notes whether the page was there.
    static bool seen = false;
    seen = false;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM) -> BOOL {
                wchar_t title[100]{};
                ::GetWindowText(window, title, 100);
                if (!::IsWindowVisible(window) || !::wcsstr(title, L"Test Control")) {
                    return TRUE;
                }
                ::EnumChildWindows(
                    window,
                    [](HWND child, LPARAM) -> BOOL {
                        seen = seen || (::GetDlgCtrlID(child) == kPageEdit && ::IsWindowVisible(child));
                        return TRUE;
                    },
                    0);
                ::PostMessage(window, WM_COMMAND, IDCANCEL, 0);
                return FALSE;
            },
            0);
    });
    MockContainer container;
    container.Embed(m_control.Get());
    EXPECT_EQ(S_OK, container.DoVerb(OLEIVERB_PROPERTIES));
    ::KillTimer(nullptr, timer);
    EXPECT_TRUE(seen);
    container.Remove();
    ::CoRevokeClassObject(cookie);
}

} // namespace
