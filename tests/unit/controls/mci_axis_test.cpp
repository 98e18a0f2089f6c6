// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_axis.h"

#include <gtest/gtest.h>

#include "platform/mci_control.h"

namespace corvane {
namespace {

std::int32_t packed(std::uint32_t track, std::uint32_t minute, std::uint32_t second, std::uint32_t frame = 0) {
    return static_cast<std::int32_t>(track | minute << 8U | second << 16U | frame << 24U);
}

/// Track 1: 3 s, track 2: 2 s, a disc that counts from its lead-in of 2 s on.
MciAxis disc() { return {kCdSectorsPerSecond, 375, {{1, 150, 225, true}, {2, 375, 150, true}}}; }
MciAxis file() { return {1000, 4000, {}}; }

/// WIN-21: A file counts milliseconds, a disc the sectors from its first track
TEST(MciAxis, AFileCountsMilliseconds) {
    EXPECT_EQ(file().fromPlace(1500, kFormatMilliseconds), 1500);
    EXPECT_EQ(file().fromPlace(9000, kFormatMilliseconds), 4000) << "held inside";
    EXPECT_EQ(file().fromPlace(-5, kFormatMilliseconds), 0);
    EXPECT_EQ(MciAxis().fromPlace(9000, kFormatMilliseconds), 9000) << "a length that is not known holds nothing";
    EXPECT_EQ(file().toPlace(1500, kFormatMilliseconds), 1500);
    EXPECT_EQ(file().toPlace(2000, kFormatTmsf), packed(1, 0, 2)) << "one track";
    EXPECT_EQ(file().fromPlace(packed(1, 0, 2), kFormatTmsf), 2000);
    EXPECT_EQ(file().trackLength(1), packed(0, 0, 4) >> 8);
    EXPECT_EQ(file().trackLength(2), 0);
}

/// WIN-21
TEST(MciAxis, ADiscCountsSectorsFromItsFirstTrack) {
    EXPECT_EQ(disc().fromPlace(packed(1, 0, 1), kFormatTmsf), 75);
    EXPECT_EQ(disc().fromPlace(2, kFormatTmsf), 225) << "a track's number alone is its start";
    EXPECT_EQ(disc().fromPlace(packed(2, 0, 9), kFormatTmsf), 375) << "held inside its track";
    EXPECT_EQ(disc().toPlace(225 + 75, kFormatTmsf), packed(2, 0, 1));
    EXPECT_EQ(disc().toPlace(75, kFormatMilliseconds), 1000);
    EXPECT_EQ(disc().trackLength(2), packed(0, 0, 2) >> 8);
    EXPECT_EQ(disc().trackLength(3), 0);
}

/// WIN-21
TEST(MciAxis, APlayOfATrackWhoseLengthWasNotKnownEndsWithIt) {
    EXPECT_EQ(disc().endOf(packed(1, 0, 2), 0, kFormatTmsf), 150);
    EXPECT_EQ(disc().endOf(1, 0, kFormatTmsf), 225);
    EXPECT_EQ(disc().endOf(1, 75, kFormatTmsf), 225);
    EXPECT_EQ(disc().endOf(2, 225, kFormatTmsf), 375);
    EXPECT_EQ(disc().endOf(2, 0, kFormatTmsf), 225) << "from another track: up to it";
    EXPECT_EQ(file().endOf(0, 0, kFormatMilliseconds), 0);
}

}  // namespace
}  // namespace corvane
