#include "OleTestControl.h"

#include <OleTest.h>

#include <algorithm>

namespace {

constexpr wchar_t kClass[] = L"\\CLSID\\{5D4F6F5E-8D3A-4C1C-9A52-0F4BE0B9A004}";
constexpr wchar_t kPage[] = L"\\CLSID\\{5D4F6F5E-8D3A-4C1C-9A52-0F4BE0B9A005}";

class RegistrationTest : public OleTest {
protected:
    static bool Has(const std::wstring& line) {
        const std::vector<std::wstring> lines = PrivateClassesRoot::Content();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    static std::wstring Module() {
        wchar_t path[MAX_PATH]{};
        ::GetModuleFileName(nullptr, path, MAX_PATH);
        return path;
    }

    PrivateClassesRoot m_root;
};

TEST_F(RegistrationTest, ClassesHaveExactlyTheirEntries) {
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(TRUE));
    const std::wstring clsid(kClass);
    const std::wstring page(kPage);
    const std::vector<std::wstring> expected = {
        L"\\CLSID",
        clsid,
        clsid + L"|=Test Control",
        clsid + L"\\Control",
        clsid + L"\\Control|=",
        clsid + L"\\InprocServer32",
        clsid + L"\\InprocServer32|=" + Module(),
        clsid + L"\\InprocServer32|ThreadingModel=Apartment",
        clsid + L"\\MiscStatus",
        clsid + L"\\MiscStatus|=0",
        clsid + L"\\MiscStatus\\1",
        clsid + L"\\MiscStatus\\1|=131473",
        clsid + L"\\ProgID",
        clsid + L"\\ProgID|=OLETEST.TestControl.1",
        clsid + L"\\ToolboxBitmap32",
        clsid + L"\\ToolboxBitmap32|=" + Module() + L", 1012",
        clsid + L"\\TypeLib",
        clsid + L"\\TypeLib|={5D4F6F5E-8D3A-4C1C-9A52-0F4BE0B9A001}",
        clsid + L"\\Version",
        clsid + L"\\Version|=1.0",
        page,
        page + L"|=Test Page",
        page + L"\\InprocServer32",
        page + L"\\InprocServer32|=" + Module(),
        L"\\OLETEST.TestControl.1",
        L"\\OLETEST.TestControl.1|=Test Control",
        L"\\OLETEST.TestControl.1\\CLSID",
        L"\\OLETEST.TestControl.1\\CLSID|={5D4F6F5E-8D3A-4C1C-9A52-0F4BE0B9A004}",
    };
    std::vector<std::wstring> sorted = expected;
    std::vector<std::wstring> found = PrivateClassesRoot::Content();
    std::sort(sorted.begin(), sorted.end());
    std::sort(found.begin(), found.end());
    EXPECT_EQ(sorted, found);
}

TEST_F(RegistrationTest, UnregisteringLeavesWhatWasThereBefore) {
    HKEY key = nullptr;
    for (LPCTSTR present : {L"CLSID", L"TypeLib", L"Interface"}) { // every registry has these
        ::RegCreateKeyEx(HKEY_CLASSES_ROOT, present, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
        ::RegCloseKey(key);
    }
    const std::vector<std::wstring> before = PrivateClassesRoot::Content();
    ASSERT_TRUE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_OleTestLib));
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(TRUE));
    EXPECT_NE(before, PrivateClassesRoot::Content());
    ASSERT_TRUE(AfxOleUnregisterTypeLib(LIBID_OleTestLib, 1, 0));
    ASSERT_TRUE(COleObjectFactory::UpdateRegistryAll(FALSE));
    EXPECT_EQ(before, PrivateClassesRoot::Content());
}

TEST_F(RegistrationTest, TypeLibraryIsRegisteredOnceAndForItsGuidOnly) {
    EXPECT_FALSE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), IID_IUnknown)) << "another library";
    EXPECT_FALSE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_OleTestLib, L"missing.tlb"));
    EXPECT_FALSE(AfxOleUnregisterTypeLib(LIBID_OleTestLib, 1, 0)) << "not registered";
    EXPECT_TRUE(PrivateClassesRoot::Content().empty());
    EXPECT_TRUE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_OleTestLib));
    EXPECT_FALSE(AfxOleUnregisterTypeLib(LIBID_OleTestLib, 2, 0)) << "another version";
    EXPECT_TRUE(AfxOleUnregisterTypeLib(LIBID_OleTestLib, 1, 0));
    EXPECT_FALSE(AfxOleUnregisterTypeLib(LIBID_OleTestLib, 1, 0));
}

TEST_F(RegistrationTest, ThreadingModelFollowsTheFlags) {
    const auto registered = [](int flags) {
        return AfxOleRegisterControlClass(AfxGetInstanceHandle(), CTestControl::guid, kTestProgID, kTypeName,
                                          1, flags, 0, LIBID_OleTestLib, 1, 0);
    };
    const std::wstring model = std::wstring(kClass) + L"\\InprocServer32|ThreadingModel=";
    ASSERT_TRUE(registered(afxRegFreeThreading));
    EXPECT_TRUE(Has(model + L"Free"));
    ASSERT_TRUE(registered(afxRegFreeThreading | afxRegApartmentThreading | afxRegInsertable));
    EXPECT_TRUE(Has(model + L"Both"));
    EXPECT_TRUE(Has(std::wstring(kClass) + L"\\Insertable"));
    EXPECT_TRUE(Has(L"\\OLETEST.TestControl.1\\Insertable"));
    ASSERT_TRUE(AfxOleUnregisterClass(CTestControl::guid, kTestProgID));
}

TEST_F(RegistrationTest, ClassWithoutANameIsNotRegistered) {
    EXPECT_FALSE(AfxOleRegisterControlClass(AfxGetInstanceHandle(), CTestControl::guid, kTestProgID, 999, 1,
                                            0, 0, LIBID_OleTestLib, 1, 0));
    EXPECT_FALSE(AfxOleRegisterPropertyPageClass(AfxGetInstanceHandle(), CTestPage::guid, 999));
    EXPECT_TRUE(PrivateClassesRoot::Content().empty());
}

TEST_F(RegistrationTest, AbsentClassCountsAsUnregistered) {
    EXPECT_TRUE(AfxOleUnregisterClass(CTestControl::guid, kTestProgID));
    EXPECT_TRUE(AfxOleUnregisterClass(CTestPage::guid, nullptr));
}

TEST_F(RegistrationTest, RegisteredClassIsCreatedByItsTypeLibrarysClass) {
    ASSERT_TRUE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_OleTestLib));
    const ComPtr<IUnknown> control = CreateControl();
    const ComPtr<IProvideClassInfo2> provider = control.As<IProvideClassInfo2>(IID_IProvideClassInfo2);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(S_OK, provider->GetClassInfo(info.Receive()));
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(S_OK, info->GetTypeAttr(&attributes));
    EXPECT_EQ(CTestControl::guid, attributes->guid);
    EXPECT_EQ(TKIND_COCLASS, attributes->typekind);
    info->ReleaseTypeAttr(attributes);
    GUID events{};
    EXPECT_EQ(S_OK, provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events));
    EXPECT_EQ(DIID__DTestEvents, events);
    EXPECT_EQ(E_INVALIDARG, provider->GetGUID(2, &events));
}

} // namespace
