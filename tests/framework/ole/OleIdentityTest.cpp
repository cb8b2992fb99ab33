#include "ControlInterfaces.h"
#include "OleTestControl.h"

namespace {

using OleIdentityTest = OleTest;

/// An object that makes a control a part of itself and offers one interface of its own, IPersistFile.
class Outer final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IPersistFile) {
            *object = static_cast<IUnknown*>(this);
            AddRef();
            return S_OK;
        }
        return inner ? inner->QueryInterface(iid, object) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }

    IUnknown* inner = nullptr;
    LONG references = 1;
};

TEST_F(OleIdentityTest, EveryInterfaceLeadsToEveryOtherAndToOneUnknown) {
    const ComPtr<IUnknown> control = CreateControl();
    for (const NamedInterface& from : ControlInterfaces()) {
        const ComPtr<IUnknown> first = control.As<IUnknown>(*from.iid);
        ASSERT_TRUE(first) << from.name;
        EXPECT_EQ(control.Get(), first.As<IUnknown>(IID_IUnknown).Get()) << from.name;
        for (const NamedInterface& to : ControlInterfaces()) {
            const ComPtr<IUnknown> second = first.As<IUnknown>(*to.iid);
            ASSERT_TRUE(second) << from.name << " to " << to.name;
            EXPECT_EQ(second.Get(), control.As<IUnknown>(*to.iid).Get()) << to.name << " is always the same";
            EXPECT_EQ(first.Get(), second.As<IUnknown>(*from.iid).Get())
                << to.name << " back to " << from.name;
        }
    }
}

TEST_F(OleIdentityTest, ThePrimaryDispatchInterfaceIsTheDispatch) {
    const ComPtr<IUnknown> control = CreateControl();
    IID primary{};
    ASSERT_TRUE(CTestControl::last->GetDispatchIID(&primary));
    EXPECT_EQ(control.As<IUnknown>(IID_IDispatch).Get(), control.As<IUnknown>(primary).Get());
}

TEST_F(OleIdentityTest, UnknownInterfacesAndNoPlaceAreRefused) {
    const ComPtr<IUnknown> control = CreateControl();
    void* object = &object;
    EXPECT_EQ(E_NOINTERFACE, control->QueryInterface(IID_IPersistFile, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(E_POINTER, control->QueryInterface(IID_IUnknown, nullptr));
}

TEST_F(OleIdentityTest, AggregatedControlHasTheIdentityOfItsOwner) {
    Outer outer;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, factory.ReceiveVoid()));
    void* refused = nullptr;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(&outer, IID_IOleObject, &refused));
    ComPtr<IUnknown> inner;
    ASSERT_EQ(S_OK, factory->CreateInstance(&outer, IID_IUnknown, inner.ReceiveVoid()));
    outer.inner = inner.Get();
    for (const NamedInterface& from : ControlInterfaces()) {
        const ComPtr<IUnknown> part = common::Query<IUnknown>(&outer, *from.iid);
        ASSERT_TRUE(part) << from.name;
        EXPECT_EQ(&outer, part.As<IUnknown>(IID_IUnknown).Get()) << from.name;
        EXPECT_TRUE(part.As<IUnknown>(IID_IPersistFile)) << "the owner's own interface through " << from.name;
    }
    EXPECT_EQ(1, outer.references);
    outer.inner = nullptr;
}

} // namespace
