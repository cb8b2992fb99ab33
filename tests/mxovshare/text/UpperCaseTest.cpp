// The table of upper case that is used where there is no Windows, against the system's own.
#include "common/posix/common/UpperCase.h"
#include "text/UpperCase.h"

#include <gtest/gtest.h>

namespace {

constexpr char32_t kEnd = 0x10000;

// Latin, Greek and Cyrillic, which every system knows alike.
bool IsOld(char32_t unit) {
    return unit < 0x250 || (unit >= 0x370 && unit < 0x530);
}

TEST(UpperCaseTable, IsThatOfTheSystem) {
    int mapped = 0;
    for (char32_t code = 0; code < kEnd; ++code) {
        const auto unit = static_cast<char16_t>(code);
        const char16_t upper = common::UpperCase(unit);
        mapped += upper != unit ? 1 : 0;
        // Newer systems know more characters.
        if (upper != unit || IsOld(code)) {
            ASSERT_TRUE(upper == mxovshare::UpperCase(unit)) << static_cast<unsigned>(code);
        }
    }
    EXPECT_GT(mapped, 1000);
}

} // namespace
