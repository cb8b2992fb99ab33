// Registration when the registry does not play along. Everything under HKEY_CLASSES_ROOT is a key of the
// test's own; a key that is volatile cannot get the lasting keys that registration makes.
#include "ControlObject.h"
#include "ImportHook.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

constexpr wchar_t kTestRoot[] = L"Software\\MxovRegistrationTest";
constexpr wchar_t kControlKey[] = L"CLSID\\{6406FF95-0F04-4382-852B-89E0979EAEE8}";
constexpr wchar_t kPageKey[] = L"CLSID\\{D282CB0E-7C46-48A7-B12A-E3137955F8C1}";
constexpr wchar_t kLibraryKey[] = L"TypeLib\\{D14D7A76-F727-49FE-ADA4-641D4B61ED73}";
constexpr wchar_t kProgIdKey[] = L"MXOVTREETAB.MXOVDocViewCtrlVS2015.13";

/// What cannot be deleted: keys that begin with this.
std::wstring refused;

/// In place of the system's function in the control's module.
LSTATUS WINAPI RefuseToDelete(HKEY key, LPCWSTR path) {
    return std::wstring_view(path).starts_with(refused) ? ERROR_ACCESS_DENIED : RegDeleteTreeW(key, path);
}

/// The classes whose keys the control's module creates while the object lives, in their order. One at a time.
class CreatedClasses {
public:
    explicit CreatedClasses(HMODULE module) : m_module(module) {
        s_paths.clear();
        s_real = reinterpret_cast<decltype(s_real)>(
            HookImport(module, "RegCreateKeyExW", reinterpret_cast<void*>(&Create)));
    }
    ~CreatedClasses() { HookImport(m_module, "RegCreateKeyExW", reinterpret_cast<void*>(s_real)); }
    CreatedClasses(const CreatedClasses&) = delete;
    CreatedClasses& operator=(const CreatedClasses&) = delete;

    [[nodiscard]] static const std::vector<std::wstring>& Paths() { return s_paths; }

private:
    static LSTATUS WINAPI Create(HKEY key, LPCWSTR path, DWORD reserved, LPWSTR kind, DWORD options,
                                 REGSAM access, SECURITY_ATTRIBUTES* security, PHKEY created,
                                 LPDWORD disposition) {
        if (std::wstring(path) == kControlKey || std::wstring(path) == kPageKey) {
            s_paths.emplace_back(path);
        }
        return s_real(key, path, reserved, kind, options, access, security, created, disposition);
    }

    static inline decltype(&RegCreateKeyExW) s_real = nullptr;
    static inline std::vector<std::wstring> s_paths;
    HMODULE m_module;
};

class RegistrationErrorTest : public testing::Test {
protected:
    RegistrationErrorTest() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kTestRoot);
        if (RegCreateKeyExW(HKEY_CURRENT_USER, kTestRoot, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_root,
                            nullptr) ||
            RegOverridePredefKey(HKEY_CLASSES_ROOT, m_root)) {
            throw std::runtime_error("no private registry");
        }
    }
    ~RegistrationErrorTest() override {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(m_root);
        RegDeleteTreeW(HKEY_CURRENT_USER, kTestRoot);
    }

    static bool Exists(const std::wstring& path) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key)) {
            return false;
        }
        RegCloseKey(key);
        return true;
    }

    /// A key below which nothing lasting can be made.
    static void Block(const wchar_t* path) {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CLASSES_ROOT, path, 0, nullptr, REG_OPTION_VOLATILE,
                                                 KEY_ALL_ACCESS, nullptr, &key, nullptr));
        RegCloseKey(key);
    }

    [[nodiscard]] HRESULT Register() const { return m_module.Call("DllRegisterServer"); }
    [[nodiscard]] HRESULT Unregister() const { return m_module.Call("DllUnregisterServer"); }

    static void ExpectClasses(bool there) {
        EXPECT_EQ(there, Exists(kControlKey));
        EXPECT_EQ(there, Exists(kPageKey));
        EXPECT_EQ(there, Exists(kProgIdKey));
    }

    [[nodiscard]] HMODULE Module() const { return m_module.Handle(); }

    /// A control of the module, made past the registry.
    [[nodiscard]] ComPtr<IDispatch> CreateUnregistered() const {
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto get = reinterpret_cast<GetClassObject>(
            reinterpret_cast<void*>(GetProcAddress(m_module.Handle(), "DllGetClassObject")));
        ComPtr<IClassFactory> factory;
        ComPtr<IDispatch> control;
        EXPECT_EQ(S_OK,
                  get(kControlClass, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())));
        EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IDispatch,
                                                reinterpret_cast<void**>(control.GetAddressOf())));
        return control;
    }

private:
    HKEY m_root = nullptr;
    ControlModule m_module;
};

} // namespace

TEST_F(RegistrationErrorTest, RegistersAndUnregistersWithoutTrace) {
    EXPECT_EQ(S_OK, Register());
    ExpectClasses(true);
    EXPECT_TRUE(Exists(kLibraryKey));
    EXPECT_EQ(S_OK, Unregister());
    ExpectClasses(false);
    EXPECT_FALSE(Exists(kLibraryKey));
}

TEST_F(RegistrationErrorTest, TheControlIsRegisteredBeforeItsPage) {
    const CreatedClasses created(Module());
    EXPECT_EQ(S_OK, Register());
    EXPECT_EQ(created.Paths(), (std::vector<std::wstring>{kControlKey, kPageKey}));
}

TEST_F(RegistrationErrorTest, TypeLibraryThatCannotBeRegisteredStopsIt) {
    Block(L"TypeLib");
    EXPECT_EQ(SELFREG_E_TYPELIB, Register());
    ExpectClasses(false);
}

TEST_F(RegistrationErrorTest, ClassThatCannotBeRegisteredIsTold) {
    Block(L"CLSID");
    EXPECT_EQ(SELFREG_E_CLASS, Register());
    ExpectClasses(false);
    EXPECT_TRUE(Exists(kLibraryKey)) << "the type library stays registered";
}

TEST_F(RegistrationErrorTest, ClassThatFailsHalfwayLeavesNothingOfItself) {
    Block(kProgIdKey);
    EXPECT_EQ(SELFREG_E_CLASS, Register());
    EXPECT_FALSE(Exists(kControlKey));
}

TEST_F(RegistrationErrorTest, UnregisteringTwiceFailsAtTheTypeLibrary) {
    ASSERT_EQ(S_OK, Register());
    ASSERT_EQ(S_OK, Unregister());
    EXPECT_EQ(SELFREG_E_TYPELIB, Unregister());
}

TEST_F(RegistrationErrorTest, UnregisteringWithoutTheTypeLibraryLeavesTheClasses) {
    ASSERT_EQ(S_OK, Register());
    ASSERT_EQ(ERROR_SUCCESS, RegDeleteTreeW(HKEY_CLASSES_ROOT, kLibraryKey));
    EXPECT_EQ(SELFREG_E_TYPELIB, Unregister());
    ExpectClasses(true);
}

TEST_F(RegistrationErrorTest, ClassThatCannotBeUnregisteredIsTold) {
    for (const wchar_t* key : {L"", L"CLSID\\", L"MXOVTREETAB"}) {
        refused = key;
        ASSERT_EQ(S_OK, Register());
        void* const deleteTree =
            HookImport(Module(), "RegDeleteTreeW", reinterpret_cast<void*>(&RefuseToDelete));
        ASSERT_TRUE(deleteTree);
        EXPECT_EQ(SELFREG_E_CLASS, Unregister()) << key;
        HookImport(Module(), "RegDeleteTreeW", deleteTree);
        EXPECT_FALSE(Exists(kLibraryKey)) << "the type library went first";
        EXPECT_EQ(refused.starts_with(L"M"), !Exists(kControlKey)) << key;
        EXPECT_TRUE(Exists(kPageKey)) << "the first class that fails ends it";
        EXPECT_EQ(SELFREG_E_TYPELIB, Unregister()) << "and the next try at the type library";
    }
}

TEST_F(RegistrationErrorTest, UnregisteredControlKnowsItsType) {
    const ComPtr<IDispatch> control = CreateUnregistered();
    ASSERT_TRUE(control);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(S_OK, control->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type));
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(S_OK, type->GetTypeAttr(&attributes));
    EXPECT_EQ(kPrimaryInterface, attributes->guid);
    type->ReleaseTypeAttr(attributes);
    ComPtr<IProvideClassInfo> provider;
    ASSERT_EQ(S_OK, control.As(&provider));
    EXPECT_EQ(S_OK, provider->GetClassInfo(&type));
}
