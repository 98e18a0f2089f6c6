// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_facts.h"

#include <gtest/gtest.h>
#include <mpv/client.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "media/movies/movie_handle.h"

namespace corvane {
namespace {

TEST(MovieFacts, APictureKeepsItsShapeInAWindowsSize) {
    EXPECT_EQ(sensiblePicture({320, 240}), (PictureSize{320, 240}));
    const PictureSize wide = sensiblePicture({1'000'000'000, 2});
    EXPECT_EQ(wide, (PictureSize{8192, 1}));
    const PictureSize large = sensiblePicture({20'000, 10'000});
    EXPECT_LE(large.pixels(), kMostMoviePixels + large.width);
    EXPECT_NEAR(static_cast<double>(large.width) / large.height, 2, 0.01);
}

TEST(MovieFacts, WhatIsNoLengthIsNone) {
    EXPECT_EQ(sensibleLength(5.5), 5.5);
    EXPECT_EQ(sensibleLength(-1), 0);
    EXPECT_EQ(sensibleLength(std::nan("")), 0);
    const double longest = sensibleLength(std::numeric_limits<double>::infinity());
    EXPECT_EQ(sensibleLength(longest * 2), longest);
}

TEST(MovieFacts, ProgramStreamsAreSoughtFromBefore) {
    EXPECT_EQ(seekOffset("mpeg"), 2);
    EXPECT_EQ(seekOffset("mov,mp4"), 0);
}

/// A picture as the library gives it, two pixels across with a third one of padding.
class RawPicture : public testing::Test {
protected:
    RawPicture() {
        for (std::size_t i = 0; i < kNames.size(); ++i) keys_[i] = const_cast<char*>(kNames[i]);
        values_[0].format = values_[1].format = values_[2].format = MPV_FORMAT_INT64;
        values_[0].u.int64 = 2;
        values_[1].u.int64 = 2;
        values_[2].u.int64 = 12;
        values_[3].format = MPV_FORMAT_BYTE_ARRAY;
        values_[3].u.ba = &bytes_;
        raw_.format = MPV_FORMAT_NODE_MAP;
        raw_.u.list = &list_;
    }
    static constexpr std::array<const char*, 4> kNames{"w", "h", "stride", "data"};
    std::array<std::uint32_t, 6> pixels_{1, 2, 9, 3, 4, 9};
    mpv_byte_array bytes_{pixels_.data(), sizeof pixels_};
    std::array<char*, 4> keys_{};
    std::array<mpv_node, 4> values_{};
    mpv_node_list list_{4, values_.data(), keys_.data()};
    mpv_node raw_{};
};

TEST_F(RawPicture, IsTakenLineByLine) {
    const PicturePixels picture = moviePicture(raw_);
    EXPECT_EQ(picture.held, (PictureSize{2, 2}));
    EXPECT_EQ(picture.pixels, (std::vector<std::uint32_t>{1, 2, 3, 4}));
}

TEST_F(RawPicture, IsNoneWhereItsSizesDoNotFitItsBytes) {
    const auto takes = [this] { return !moviePicture(raw_).pixels.empty(); };
    values_[2].u.int64 = 7;  // less than a line of pixels
    EXPECT_FALSE(takes());
    values_[2].u.int64 = 13;  // more than there is
    EXPECT_FALSE(takes());
    values_[2].u.int64 = 12;
    values_[1].u.int64 = 3;
    EXPECT_FALSE(takes());
    values_[1].u.int64 = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(takes());
    values_[1].u.int64 = 2;
    values_[0].u.int64 = -2;
    EXPECT_FALSE(takes());
    values_[0].u.int64 = 2;
    EXPECT_TRUE(takes());
    values_[3].format = MPV_FORMAT_NONE;
    EXPECT_FALSE(takes());
    raw_.format = MPV_FORMAT_NONE;
    EXPECT_FALSE(takes());
}

}  // namespace
}  // namespace corvane
