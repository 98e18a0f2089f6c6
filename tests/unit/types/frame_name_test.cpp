// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/frame_name.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr std::int64_t kSecond = 1'000'000;

/// MOVIE-38: A saved frame is named by the movie's title and the frame's time
TEST(FrameName, IsTheTitleAndTheTime) {
    EXPECT_EQ(frameName("Film", 0), "Film 00.00.00.000");
    EXPECT_EQ(frameName("Film", 83 * kSecond + 456'789), "Film 00.01.23.456");
    EXPECT_EQ(frameName("\xE6\xAD\x8C", 7262 * kSecond), "\xE6\xAD\x8C 02.01.02.000");
    EXPECT_EQ(frameName("Film", -5), "Film 00.00.00.000");
}

/// MOVIE-38
TEST(FrameName, IsOnePlainNameWhateverTheTitleIs) {
    EXPECT_EQ(frameName("../../etc/a", 0), "_.._etc_a 00.00.00.000");
    EXPECT_EQ(frameName("...", 0), "Movie 00.00.00.000");
    EXPECT_EQ(frameName("", 0), "Movie 00.00.00.000");
    EXPECT_EQ(frameName("a\nb\tc", 0), "a b c 00.00.00.000");
    EXPECT_EQ(frameName("C:\\x?*|<>\"", 0), "C__x______ 00.00.00.000");
    std::string title;
    for (int i = 0; i < 200; ++i) title += "\xE6\xAD\x8C";
    const std::string name = frameName(title, 0);
    EXPECT_LE(name.size(), 140U);
    EXPECT_EQ(name.substr(0, 120), title.substr(0, 120)) << "whole characters";
    EXPECT_EQ(name.substr(120), " 00.00.00.000");
}

}  // namespace
}  // namespace corvane
