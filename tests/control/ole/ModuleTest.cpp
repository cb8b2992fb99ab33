// The module as a whole: two controls in it, its end and return, its version.
#include "ControlObject.h"
#include "PackageBuilder.h"

#include <array>

namespace {

using ModuleTest = ControlObjectTest;

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

ComPtr<IClassFactory> Factory(HMODULE module, REFCLSID clsid) {
    ComPtr<IClassFactory> factory;
    const auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    get(clsid, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf()));
    return factory;
}

std::wstring VersionText(const std::vector<BYTE>& version, const std::wstring& name) {
    void* text = nullptr;
    UINT length = 0;
    const std::wstring path = L"\\StringFileInfo\\040904B0\\" + name;
    return VerQueryValueW(version.data(), path.c_str(), &text, &length)
               ? std::wstring(static_cast<const wchar_t*>(text))
               : L"(absent)";
}

} // namespace

TEST_F(ModuleTest, CanGoOnlyWithTheLastObject) {
    EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow"));
    auto first = CreateControl();
    auto second = CreateControl();
    EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow"));
    first.Reset();
    EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow"));
    const auto automation = Automation(second.Get());
    second.Reset();
    EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow")) << "any interface holds the object";
}

TEST_F(ModuleTest, LockedServerStays) {
    auto factory = Factory(m_module.Handle(), kControlClass);
    ASSERT_TRUE(factory);
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow"));
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    factory.Reset();
    EXPECT_EQ(S_FALSE, m_module.Call("DllCanUnloadNow"));
    factory = Factory(m_module.Handle(), kControlClass);
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    factory.Reset();
    EXPECT_EQ(S_OK, m_module.Call("DllCanUnloadNow"));
    EXPECT_TRUE(Factory(m_module.Handle(), kPageClass));
    EXPECT_FALSE(Factory(m_module.Handle(), kTypeLibrary)) << "no class of this module";
}

TEST_F(ModuleTest, VersionResourceIsComplete) {
    std::array<wchar_t, MAX_PATH> path = {};
    GetModuleFileNameW(m_module.Handle(), path.data(), MAX_PATH);
    DWORD unused = 0;
    std::vector<BYTE> version(GetFileVersionInfoSizeW(path.data(), &unused));
    ASSERT_FALSE(version.empty());
    ASSERT_TRUE(GetFileVersionInfoW(path.data(), 0, static_cast<DWORD>(version.size()), version.data()));
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(version.data(), L"\\", &value, &length));
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(MAKELONG(MXOV_VERSION_MINOR, MXOV_VERSION_MAJOR), static_cast<LONG>(fixed.dwFileVersionMS));
    EXPECT_EQ(MAKELONG(0, MXOV_VERSION_PATCH), static_cast<LONG>(fixed.dwFileVersionLS));
    EXPECT_EQ(MAKELONG(MXOV_VERSION_MINOR, MXOV_VERSION_MAJOR), static_cast<LONG>(fixed.dwProductVersionMS));
    EXPECT_EQ(static_cast<DWORD>(VFT_DLL), fixed.dwFileType);
    EXPECT_EQ(static_cast<DWORD>(VOS_NT_WINDOWS32), fixed.dwFileOS);
    EXPECT_EQ(L"" MXOV_VERSION ".0", VersionText(version, L"FileVersion"));
    EXPECT_EQ(L"" MXOV_VERSION ".0", VersionText(version, L"ProductVersion"));
    EXPECT_EQ(L"MXOVDocViewCtrl", VersionText(version, L"InternalName"));
    EXPECT_EQ(L"MXOVDocViewCtrl.ocx", VersionText(version, L"OriginalFilename"));
    EXPECT_EQ(L"", VersionText(version, L"OLESelfRegister")) << "present, and empty";
    for (const wchar_t* name : {L"CompanyName", L"FileDescription", L"ProductName", L"LegalCopyright"}) {
        EXPECT_NE(L"(absent)", VersionText(version, name));
        EXPECT_NE(L"", VersionText(version, name));
    }
    ASSERT_TRUE(VerQueryValueW(version.data(), L"\\VarFileInfo\\Translation", &value, &length));
    EXPECT_EQ(MAKELONG(0x409, 1200), *static_cast<const LONG*>(value));
}
