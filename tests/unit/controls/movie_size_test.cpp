// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/movie_size.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr MovieExtent kScreen{15000, 12000};

TEST(MovieSize, IsThePicturesOwnOrTwiceItWithTwoBorders) {
    for (const int size : {0, 5, -1}) {
        EXPECT_FLOAT_EQ(movieExtent(320, 200, size, kScreen).width, 4800) << size;
        EXPECT_FLOAT_EQ(movieExtent(320, 200, size, kScreen).height, 3030) << size;
    }
    EXPECT_FLOAT_EQ(movieExtent(320, 200, 1, kScreen).width, 9600);
    EXPECT_FLOAT_EQ(movieExtent(320, 200, 1, kScreen).height, 6030);
}

TEST(MovieSize, IsAShareOfTheScreen) {
    const float shares[] = {0.25F, 0.5F, 0.707F};
    for (int size = 2; size <= 4; ++size) {
        EXPECT_FLOAT_EQ(movieExtent(320, 200, size, kScreen).width, 15000 * shares[size - 2]) << size;
        EXPECT_FLOAT_EQ(movieExtent(0, 0, size, kScreen).height, 12000 * shares[size - 2]) << size;
    }
}

TEST(MovieSize, HasAPlaceholderWithoutAPicture) {
    EXPECT_FLOAT_EQ(movieExtent(0, 0, 0, kScreen).width, 4800);
    EXPECT_FLOAT_EQ(movieExtent(0, 0, 0, kScreen).height, 3630);
}

}  // namespace
}  // namespace corvane
