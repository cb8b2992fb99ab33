// The module state, in this program and in a library that is loaded and unloaded.
#include "core/ModuleState.h"

#include "common/Handles.h"
#include "TestWindow.h"

#include "GdiObjectCount.h"
#include "HeapUse.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <type_traits>

namespace {

using Module = common::UniqueModule;

template <class Function>
Function* Entry(const Module& module, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(module.get(), name)));
}

Module LoadTestModule() {
    return Module(::LoadLibrary(L"TestModule.dll"));
}

int RunOn(const Module& module, int* ended) {
    return Entry<int(HINSTANCE, int*)>(module, "RunTestModule")(module.get(), ended);
}

TEST(ModuleState, AProgramIsAModuleToo) {
    EXPECT_EQ(AfxGetInstanceHandle(), ::GetModuleHandle(nullptr));
    EXPECT_EQ(AfxGetResourceHandle(), AfxGetInstanceHandle());
    EXPECT_EQ(AfxGetApp(), nullptr);
    const CWinApp app;
    EXPECT_EQ(AfxGetApp(), &app);
}

TEST(LoadedModule, WorksInTheHostsThreadAndEndsOnce) {
    int ended = 0;
    {
        const Module module = LoadTestModule();
        ASSERT_TRUE(module);
        EXPECT_EQ(RunOn(module, &ended), 0);
        EXPECT_EQ(ended, 0);
    }
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(::GetModuleHandle(L"TestModule.dll"), nullptr);
}

TEST(LoadedModule, CanBeLoadedAgainAndAgain) {
    int ended = 0;
    { RunOn(LoadTestModule(), &ended); }
    const int objects = GdiObjectCount();
    for (int i = 0; i < 20; ++i) {
        const Module module = LoadTestModule();
        ASSERT_TRUE(module);
        EXPECT_EQ(RunOn(module, &ended), 0);
    }
    EXPECT_EQ(ended, 21);
    EXPECT_LE(GdiObjectCount(), objects + 1);
}

struct ThreadWork {
    const Module* module;
    int result;
    HANDLE worked;
    HANDLE mayEnd;
};

DWORD WINAPI UseModule(void* parameter) {
    auto& work = *static_cast<ThreadWork*>(parameter);
    work.result = RunOn(*work.module, nullptr);
    ::SetEvent(work.worked);
    ::WaitForSingleObject(work.mayEnd, INFINITE);
    return 0;
}

TEST(LoadedModule, ThreadsThatUsedItEndBeforeAndAfterItsUnloading) {
    for (const bool endFirst : {true, false}) {
        Module module = LoadTestModule();
        ASSERT_TRUE(module);
        ThreadWork work = {&module, -1, ::CreateEvent(nullptr, TRUE, FALSE, nullptr),
                           ::CreateEvent(nullptr, TRUE, FALSE, nullptr)};
        const HANDLE thread = ::CreateThread(nullptr, 0, &UseModule, &work, 0, nullptr);
        ::WaitForSingleObject(work.worked, INFINITE);
        EXPECT_EQ(work.result, 0);
        if (endFirst) {
            ::SetEvent(work.mayEnd);
            EXPECT_EQ(::WaitForSingleObject(thread, 20000), WAIT_OBJECT_0);
            module.reset();
        } else {
            module.reset();
            EXPECT_EQ(::GetModuleHandle(L"TestModule.dll"), nullptr);
            ::SetEvent(work.mayEnd);
            EXPECT_EQ(::WaitForSingleObject(thread, 20000), WAIT_OBJECT_0);
        }
        ::CloseHandle(thread);
        ::CloseHandle(work.worked);
        ::CloseHandle(work.mayEnd);
    }
}

TEST(LoadedModule, ThreadsThatEndedLeaveNothingInIt) {
    constexpr int kThreads = 40;
    const Module module = LoadTestModule();
    ASSERT_TRUE(module);
    const auto use = [&module] { std::thread([&module] { EXPECT_EQ(RunOn(module, nullptr), 0); }).join(); };
    use(); // whatever is made once exists now
    const std::int64_t before = HeapUse::Count().blocks;
    for (int i = 0; i < kThreads; ++i) {
        use();
    }
    EXPECT_LT(HeapUse::Count().blocks - before, kThreads / 2);
}

TEST(LoadedModule, ARefusalOfItsApplicationFailsTheLoading) {
    ::SetEnvironmentVariable(L"TEST_MODULE_REFUSES", L"1");
    EXPECT_FALSE(LoadTestModule());
    ::SetEnvironmentVariable(L"TEST_MODULE_REFUSES", nullptr);
    EXPECT_TRUE(LoadTestModule());
}

TEST(LoadedModule, ItsOwnManifestIsActiveInsideIt) {
    const Module module = LoadTestModule();
    ASSERT_TRUE(module);
    EXPECT_TRUE(Entry<BOOL()>(module, "HasActivationContext")());
    HANDLE context = nullptr;
    ::GetCurrentActCtx(&context);
    EXPECT_EQ(context, nullptr) << "and not outside";
}

} // namespace
