#include "OleTestControl.h"

#include <memory>

namespace {

using OleFactoryTest = OleTest;

class ListedFactory final : public COleObjectFactory {
public:
    explicit ListedFactory(REFCLSID clsid)
        : COleObjectFactory(clsid, RUNTIME_CLASS(CTestControl), FALSE, L"Test") {}
    BOOL UpdateRegistry(BOOL) override { return TRUE; }
};

TEST_F(OleFactoryTest, MakesObjectsOfTheClassAsked) {
    const ComPtr<IUnknown> control = CreateControl();
    CLSID clsid{};
    ASSERT_EQ(S_OK, control.As<IPersist>(IID_IPersist)->GetClassID(&clsid));
    EXPECT_EQ(CTestControl::guid, clsid);
    EXPECT_TRUE(Create(CTestPage::guid).As<IPropertyPage2>(IID_IPropertyPage2));
}

TEST_F(OleFactoryTest, UnknownClassesAndInterfacesAreRefused) {
    void* object = &object;
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, AfxDllGetClassObject(IID_IUnknown, IID_IClassFactory, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(E_NOINTERFACE, AfxDllGetClassObject(CTestControl::guid, IID_IDispatch, &object));
    EXPECT_EQ(E_POINTER, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, nullptr));
}

TEST_F(OleFactoryTest, RefusedInterfaceLeavesNoObject) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, factory.ReceiveVoid()));
    void* object = &object;
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IPersistFile, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(nullptr, CTestControl::last);
}

TEST_F(OleFactoryTest, OneThatEndsLeavesTheOthersInTheirOrder) {
    constexpr CLSID kIds[] = {{1, 0, 0, {}}, {2, 0, 0, {}}, {3, 0, 0, {}}};
    const auto isKnown = [](const CLSID& clsid) {
        ComPtr<IClassFactory> factory;
        return AfxDllGetClassObject(clsid, IID_IClassFactory, factory.ReceiveVoid()) == S_OK;
    };
    std::unique_ptr<COleObjectFactory> factories[3];
    for (std::size_t i = 0; i < 3; ++i) {
        factories[i] = std::make_unique<ListedFactory>(kIds[i]);
    }
    for (const std::size_t next : {1, 2, 0}) {
        EXPECT_TRUE(isKnown(kIds[next]));
        factories[next].reset();
        EXPECT_FALSE(isKnown(kIds[next]));
    }
    EXPECT_TRUE(isKnown(CTestControl::guid));
    EXPECT_TRUE(isKnown(CTestPage::guid));
}

TEST_F(OleFactoryTest, ModuleStaysWhileAnythingOfItIsHeld) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, factory.ReceiveVoid()));
    EXPECT_EQ(S_FALSE, AfxDllCanUnloadNow()) << "a class factory";
    ASSERT_EQ(S_OK, factory->LockServer(TRUE));
    factory.Reset();
    EXPECT_EQ(S_FALSE, AfxDllCanUnloadNow()) << "a lock";
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, factory.ReceiveVoid()));
    ASSERT_EQ(S_OK, factory->LockServer(FALSE));
    factory.Reset();
    EXPECT_EQ(S_OK, AfxDllCanUnloadNow());

    ComPtr<IUnknown> control = CreateControl();
    EXPECT_EQ(S_FALSE, AfxDllCanUnloadNow()) << "a control";
    ComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(S_OK, control.As<IOleObject>(IID_IOleObject)->EnumVerbs(verbs.Receive()));
    control.Reset();
    EXPECT_EQ(nullptr, CTestControl::last);
    EXPECT_EQ(S_FALSE, AfxDllCanUnloadNow()) << "an enumerator";
    verbs.Reset();
    EXPECT_EQ(S_OK, AfxDllCanUnloadNow());
}

} // namespace
