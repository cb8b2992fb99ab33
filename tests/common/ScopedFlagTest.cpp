#include "common/ScopedFlag.h"

#include <gtest/gtest.h>

using common::ScopedFlag;

TEST(ScopedFlag, SetsAndRestores) {
    bool flag = false;
    {
        const ScopedFlag outer(flag);
        EXPECT_TRUE(flag);
        {
            const ScopedFlag inner(flag);
            EXPECT_TRUE(flag);
        }
        EXPECT_TRUE(flag) << "the outer scope lasts";
    }
    EXPECT_FALSE(flag);
}
