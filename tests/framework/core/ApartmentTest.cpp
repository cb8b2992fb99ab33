#include "core/Apartment.h"

#include "ImportHook.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace {

bool IsAllowedOnAnotherThread() {
    bool allowed = false;
    std::thread([&] { allowed = framework::Apartment::Entry().IsAllowed(); }).join();
    return allowed;
}

DWORD counted = 0; // the thread whose locks are
int locks = 0;
decltype(AcquireSRWLockExclusive)* acquire = nullptr;

void WINAPI CountedAcquire(PSRWLOCK lock) {
    if (GetCurrentThreadId() == counted) {
        ++locks;
    }
    acquire(lock);
}

// How often `work` takes a lock.
int LocksOf(const std::function<void()>& work) {
    counted = GetCurrentThreadId();
    const ImportHook<decltype(CountedAcquire)> hook("AcquireSRWLockExclusive", CountedAcquire);
    acquire = hook.Real();
    locks = 0;
    work();
    return locks;
}

// A race between two threads would show up too rarely for a test.
TEST(Apartment, WhatThreadsShareChangesUnderALock) {
    ULONG own = 0;
    EXPECT_EQ(1, LocksOf([&] { own = framework::Apartment::Join(); }));
    EXPECT_EQ(1, LocksOf([&] { framework::Apartment::Leave(own); }));
    EXPECT_EQ(2, LocksOf([] { const framework::Apartment::Entry entry; })) << "it enters and leaves";
    EXPECT_EQ(1, LocksOf([] { framework::Apartment::EndThread(); }));
}

TEST(Apartment, OneThreadAtATimeHasObjects) {
    EXPECT_TRUE(IsAllowedOnAnotherThread());
    const ULONG first = framework::Apartment::Join();
    const ULONG second = framework::Apartment::Join();
    EXPECT_FALSE(IsAllowedOnAnotherThread());
    EXPECT_TRUE(framework::Apartment::Entry().IsAllowed()) << "its own thread makes more";
    framework::Apartment::Leave(first);
    EXPECT_FALSE(IsAllowedOnAnotherThread()) << "one is left";
    framework::Apartment::Leave(second);
    EXPECT_TRUE(IsAllowedOnAnotherThread());
}

TEST(Apartment, AnObjectThatIsBeingMadeCounts) {
    const framework::Apartment::Entry entry;
    ASSERT_TRUE(entry.IsAllowed());
    EXPECT_FALSE(IsAllowedOnAnotherThread());
}

TEST(Apartment, EndOfAThreadFreesItsApartment) {
    ULONG lost = 0;
    std::thread([&] {
        lost = framework::Apartment::Join();
        framework::Apartment::EndThread();
    }).join();
    EXPECT_NE(0U, lost);
    ASSERT_TRUE(framework::Apartment::Entry().IsAllowed());
    const ULONG own = framework::Apartment::Join();
    framework::Apartment::Leave(lost); // an object of the ended thread goes after all
    EXPECT_FALSE(IsAllowedOnAnotherThread());
    framework::Apartment::Leave(own);
}

} // namespace
