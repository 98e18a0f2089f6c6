// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/coder_ends.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(CoderEnds, WhatIsBeforeAndBehindAndHowLongItIs) {
    const auto ends = coderEndsOf("iTunSMPB", " 00000000 00000840 000001CA 00000000003F31F6 00000000 00000000");
    ASSERT_TRUE(ends);
    EXPECT_EQ(ends->before, 0x840);
    EXPECT_EQ(ends->behind, 0x1CA);
    EXPECT_EQ(ends->samples, 0x3F31F6);
}

TEST(CoderEnds, WhatMakesNoSenseCountsAsNone) {
    EXPECT_FALSE(coderEndsOf("title", " 00000000 00000840 000001CA 00000000003F31F6"));
    for (const char* const value :
         {"", " ", "0", "0 840 1CA", "0 840 1CA 0", "0 840 1CA -1", "0 -840 1CA 1", "0 840 1CA FFFFFFFFFFFFFFFF",
          "0 840 1CA 1x", "0,840,1CA,1", "0x0 840 1CA 1", "0 840 1CA 123456789012345678901234567890"}) {
        EXPECT_FALSE(coderEndsOf("iTunSMPB", value)) << value;
    }
}

}  // namespace
}  // namespace corvane
