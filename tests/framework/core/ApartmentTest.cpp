#include "core/Apartment.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

bool IsAllowedOnAnotherThread() {
    bool allowed = false;
    std::thread([&] { allowed = framework::Apartment::Entry().IsAllowed(); }).join();
    return allowed;
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
