// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/movies/filter_graph.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

testing::AssertionResult is(SIZE seen, long width, long height) {
    if (seen.cx == width && seen.cy == height) return testing::AssertionSuccess();
    return testing::AssertionFailure() << seen.cx << " by " << seen.cy;
}

TEST(ShownSize, APictureOfSquarePixelsKeepsItsSize) {
    EXPECT_TRUE(is(shownSize({320, 240}, {4, 3}), 320, 240));
    EXPECT_TRUE(is(shownSize({320, 240}, {320, 240}), 320, 240));
    EXPECT_TRUE(is(shownSize({320, 240}, {}), 320, 240)) << "not known";
}

/// WIN-49: A movie has the shape that its graph tells
TEST(ShownSize, AStretchedOneGrowsInOneDirection) {
    EXPECT_TRUE(is(shownSize({720, 576}, {16, 9}), 1024, 576));
    EXPECT_TRUE(is(shownSize({720, 480}, {4, 3}), 720, 540));
    EXPECT_TRUE(is(shownSize({352, 480}, {4, 3}), 640, 480));
}

/// WIN-49
TEST(ShownSize, WhatNoMovieHasIsNotBelieved) {
    EXPECT_TRUE(is(shownSize({320, 240}, {4000, 1}), 320, 240));
    EXPECT_TRUE(is(shownSize({320, 240}, {1, 4000}), 320, 240));
    EXPECT_TRUE(is(shownSize({320, 240}, {-4, 3}), 320, 240));
    EXPECT_TRUE(is(shownSize({320, 240}, {4, 0}), 320, 240));
    EXPECT_TRUE(is(shownSize({0, 240}, {4, 3}), 0, 240));
}

}  // namespace
}  // namespace corvane
