#include "OleTestControl.h"

namespace {

using OleFactoryTest = OleTest;

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
