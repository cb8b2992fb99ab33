#include "core/Apartment.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

bool IsAllowedOnAnotherThread() {
    bool allowed = false;
    std::thread([&] { allowed = AfxApartment::Entry().IsAllowed(); }).join();
    return allowed;
}

TEST(Apartment, OneThreadAtATimeHasObjects) {
    EXPECT_TRUE(IsAllowedOnAnotherThread());
    const ULONG first = AfxApartment::Join();
    const ULONG second = AfxApartment::Join();
    EXPECT_FALSE(IsAllowedOnAnotherThread());
    EXPECT_TRUE(AfxApartment::Entry().IsAllowed()) << "its own thread makes more";
    AfxApartment::Leave(first);
    EXPECT_FALSE(IsAllowedOnAnotherThread()) << "one is left";
    AfxApartment::Leave(second);
    EXPECT_TRUE(IsAllowedOnAnotherThread());
}

TEST(Apartment, AnObjectThatIsBeingMadeCounts) {
    const AfxApartment::Entry entry;
    ASSERT_TRUE(entry.IsAllowed());
    EXPECT_FALSE(IsAllowedOnAnotherThread());
}

TEST(Apartment, EndOfAThreadFreesItsApartment) {
    ULONG lost = 0;
    std::thread([&] {
        lost = AfxApartment::Join();
        AfxApartment::EndThread();
    }).join();
    EXPECT_NE(0U, lost);
    ASSERT_TRUE(AfxApartment::Entry().IsAllowed());
    const ULONG own = AfxApartment::Join();
    AfxApartment::Leave(lost); // an object of the ended thread goes after all
    EXPECT_FALSE(IsAllowedOnAnotherThread());
    AfxApartment::Leave(own);
}

} // namespace
