#include "HeapUse.h"
#include "OleTestControl.h"

#include <OleTest.h>

#include <thread>
#include <vector>

namespace {

using OleThreadTest = OleTest;

TEST_F(OleThreadTest, ClassFactoryRefusesASecondThreadWhileObjectsLive) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(S_OK, AfxDllGetClassObject(CTestControl::guid, IID_IClassFactory, factory.ReceiveVoid()));
    ComPtr<IUnknown> control = CreateControl();
    const auto createElsewhere = [&] {
        HRESULT result = S_OK;
        std::thread([&] {
            void* object = &object;
            result = factory->CreateInstance(nullptr, IID_IUnknown, &object);
            EXPECT_EQ(SUCCEEDED(result), object != nullptr);
            if (object) {
                static_cast<IUnknown*>(object)->Release();
            }
        }).join();
        return result;
    };
    EXPECT_EQ(RPC_E_WRONG_THREAD, createElsewhere());
    control.Reset();
    EXPECT_EQ(S_OK, createElsewhere());
    EXPECT_TRUE(CreateControl()) << "and back again";
}

TEST_F(OleThreadTest, LastReleaseOnAWrongThreadIsLeftToTheRightOne) {
    IUnknown* last = CreateControl().Detach();
    std::thread([&] { EXPECT_EQ(0U, last->Release()); }).join();
    EXPECT_NE(nullptr, CTestControl::last) << "no thread but its own destroys it";
    EXPECT_EQ(S_OK, AfxDllCanUnloadNow());
    EXPECT_EQ(nullptr, CTestControl::last);
}

TEST_F(OleThreadTest, SeveralLastReleasesOnAWrongThreadAreEachDoneOnce) {
    std::vector<IUnknown*> controls;
    std::vector<CTestControl*> made;
    for (int i = 0; i < 3; ++i) {
        controls.push_back(CreateControl().Detach());
        made.push_back(CTestControl::last);
        made.back()->onEnd = [&made, own = made.back()] { std::erase(made, own); };
    }
    std::thread([&] {
        for (IUnknown* control : controls) {
            EXPECT_EQ(0U, control->Release());
        }
    }).join();
    EXPECT_EQ(3U, made.size());
    EXPECT_EQ(S_OK, AfxDllCanUnloadNow());
    EXPECT_TRUE(made.empty());
}

TEST_F(OleThreadTest, LastReleaseOfAnActiveControlIsDoneWithItsNextMessage) {
    MockContainer container;
    ComPtr<IOleObject> object = CreateControl().As<IOleObject>(IID_IOleObject);
    ASSERT_EQ(S_OK, object->SetClientSite(&container));
    ASSERT_EQ(S_OK, object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container, 0, container.Window(),
                                   &container.position));
    const HWND window = container.ControlWindow();
    std::thread([last = object.Detach()] { last->Release(); }).join();
    EXPECT_TRUE(::IsWindow(window));
    ::SendMessage(window, WM_NULL, 0, 0);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(nullptr, CTestControl::last);
    EXPECT_TRUE(container.WasCalled("OnInPlaceDeactivate"));
    EXPECT_EQ(1, container.References());
}

ComPtr<ITypeLib> TestLibrary() {
    ComPtr<ITypeLib> library;
    EXPECT_EQ(S_OK, framework::LoadTypeLibFrom(framework::PathOfModule(AfxGetInstanceHandle()),
                                               LIBID_OleTestLib, library));
    return library;
}

TEST_F(OleThreadTest, LoadingATypeLibraryLeavesNothingBehind) {
    constexpr int kLoads = 40;
    TestLibrary(); // whatever is made once exists now
    const std::int64_t before = HeapUse::Count().blocks;
    for (int i = 0; i < kLoads; ++i) {
        EXPECT_TRUE(TestLibrary());
    }
    EXPECT_LT(HeapUse::Count().blocks - before, kLoads / 2);
}

TEST_F(OleThreadTest, TypeLibraryCacheKeepsTheLibraryUntilTheLastUnlock) {
    const ComPtr<ITypeLib> library = TestLibrary();
    CTypeLibCache cache;
    cache.Lock();
    cache.Lock();
    cache.Cache(7, library.Get());
    cache.Unlock();
    EXPECT_EQ(library.Get(), cache.Lookup(7).Get());
    EXPECT_FALSE(cache.Lookup(8)) << "another locale";
    cache.Unlock();
    EXPECT_FALSE(cache.Lookup(7));
    cache.Cache(7, library.Get());
    EXPECT_FALSE(cache.Lookup(7)) << "without a lock";
}

TEST_F(OleThreadTest, TypeLibraryCacheServesSeveralThreads) {
    const ComPtr<ITypeLib> library = TestLibrary();
    CTypeLibCache cache;
    const auto hammer = [&] {
        constexpr int kRounds = 20000;
        for (int round = 0; round < kRounds; ++round) {
            cache.Lock();
            cache.Cache(0, library.Get());
            cache.Lookup(0);
            cache.Unlock();
        }
    };
    std::thread other(hammer);
    hammer();
    other.join();
    EXPECT_FALSE(cache.Lookup(0)) << "every lock was undone";
}

} // namespace
