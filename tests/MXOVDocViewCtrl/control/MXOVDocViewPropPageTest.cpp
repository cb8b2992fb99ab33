// The control's property page, made by the module's own class object and shown in a frame of the test's.
#include <ole2.h>

#include <gtest/gtest.h>
#include <ocidl.h>

#include <string>

namespace {

constexpr CLSID kPage = {0xd282cb0e, 0x7c46, 0x48a7, {0xb1, 0x2a, 0xe3, 0x13, 0x79, 0x55, 0xf8, 0xc1}};

/// Stands for the frame around property pages; notes whether the page reports a change.
class PageSite final : public IPropertyPageSite {
public:
    int statusChanges = 0;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IPropertyPageSite ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP OnStatusChange(DWORD /*flags*/) override {
        ++statusChanges;
        return S_OK;
    }
    STDMETHODIMP GetLocaleID(LCID* lcid) override {
        *lcid = LOCALE_USER_DEFAULT;
        return S_OK;
    }
    STDMETHODIMP GetPageContainer(IUnknown** container) override {
        *container = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP TranslateAccelerator(MSG* /*message*/) override { return S_FALSE; }
};

class MXOVDocViewPropPageTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        m_module = LoadLibraryW(L"MXOVDocViewCtrl.ocx");
        ASSERT_NE(m_module, nullptr);
        const auto getClassObject = reinterpret_cast<decltype(&DllGetClassObject)>(
            reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")));
        IClassFactory* factory = nullptr;
        ASSERT_EQ(getClassObject(kPage, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPropertyPage, reinterpret_cast<void**>(&m_page)),
                  S_OK);
        factory->Release();
        m_frame = CreateWindowExW(0, L"Static", L"Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 500, 300,
                                  nullptr, nullptr, nullptr, nullptr);
        ASSERT_EQ(m_page->SetPageSite(&m_site), S_OK);
    }

    void TearDown() override {
        if (m_page) {
            m_page->SetPageSite(nullptr);
            m_page->Release();
        }
        DestroyWindow(m_frame);
        FreeLibrary(m_module);
        OleUninitialize();
    }

    HMODULE m_module = nullptr;
    HWND m_frame = nullptr;
    IPropertyPage* m_page = nullptr;
    PageSite m_site;
};

TEST_F(MXOVDocViewPropPageTest, HasItsCaptionAndSize) {
    PROPPAGEINFO info = {};
    info.cb = sizeof info;
    ASSERT_EQ(m_page->GetPageInfo(&info), S_OK);
    EXPECT_STREQ(info.pszTitle, L"General");
    const RECT place = {0, 0, 400, 150};
    ASSERT_EQ(m_page->Activate(m_frame, &place, FALSE), S_OK);
    RECT units = {0, 0, 250, 62};
    ASSERT_TRUE(MapDialogRect(GetWindow(m_frame, GW_CHILD), &units));
    EXPECT_EQ(info.size.cx, units.right);
    EXPECT_EQ(info.size.cy, units.bottom);
    EXPECT_EQ(m_page->Deactivate(), S_OK);
    CoTaskMemFree(info.pszTitle);
    CoTaskMemFree(info.pszDocString);
    CoTaskMemFree(info.pszHelpFile);
}

TEST_F(MXOVDocViewPropPageTest, ShowsItsPlaceholderAndChangesNothing) {
    const RECT place = {0, 0, 400, 150};
    ASSERT_EQ(m_page->Activate(m_frame, &place, FALSE), S_OK);
    ASSERT_EQ(m_page->Show(SW_SHOW), S_OK);
    const HWND dialog = GetWindow(m_frame, GW_CHILD);
    const HWND label = GetWindow(dialog, GW_CHILD);
    wchar_t text[200] = L"";
    GetWindowTextW(label, text, ARRAYSIZE(text));
    EXPECT_STREQ(text,
                 L"TODO: Place controls to manipulate properties of MXOVDocView Control on this dialog.");
    EXPECT_EQ(GetWindow(label, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(m_page->IsPageDirty(), S_FALSE);
    EXPECT_EQ(m_page->Apply(), S_OK);
    EXPECT_EQ(m_site.statusChanges, 0);
    EXPECT_EQ(m_page->Deactivate(), S_OK);
}

} // namespace
