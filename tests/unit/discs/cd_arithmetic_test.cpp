// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/cd_arithmetic.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

// Track 1: 3 s; track 2: 2 s and 37 frames; track 3: 2 min.
const std::vector<CdTrack> kTracks{{1, 0, 225, true}, {2, 225, 187, true}, {3, 412, 9000, true}};

std::int32_t packed(std::uint32_t track, std::uint32_t minute, std::uint32_t second, std::uint32_t frame) {
    return static_cast<std::int32_t>(track | minute << 8 | second << 16 | frame << 24);
}

/// MEDIA-17: A position has the track in the lowest byte, then minutes, seconds and frames
TEST(CdArithmetic, TrackIsTheLowestByteThenMinutesSecondsFrames) {
    EXPECT_EQ(packTmsf(5, (30 * 60 + 34) * 75 + 12), 0x0C221E05);
    const CdPosition position = unpackTmsf(0x0C221E05);
    EXPECT_EQ(position.track, 5);
    EXPECT_EQ(position.sectors, (30 * 60 + 34) * 75 + 12);
}

/// MEDIA-16: A track's length has minutes in the lowest byte, then seconds, then frames
TEST(CdArithmetic, LengthHasMinutesInTheLowestByte) {
    EXPECT_EQ(packLength((4 * 60 + 33) * 75 + 74), 0x4A2104);
    EXPECT_EQ(packLength(0), 0);
    EXPECT_EQ(packLength(-1), 0);
    // A track's end is its length moved up one byte, over the track's number.
    EXPECT_EQ(unpackTmsf(packLength(9000) * 256 + 3).sectors, 9000);
}

/// MEDIA-48
TEST(CdArithmetic, FramesOfFiftyAndMoreStayReadable) {
    // The frames' byte would be the sign's byte from 128 on; 74 is the most that a disc gives.
    EXPECT_EQ(unpackTmsf(packTmsf(99, 74)).sectors, 74);
    EXPECT_EQ(unpackTmsf(packed(99, 99, 59, 74)).sectors, 99 * 4500 + 59 * 75 + 74);
}

/// MEDIA-18: A second of 60 is the next minute
TEST(CdArithmetic, ASecondOfSixtyIsTheNextMinute) {
    const std::int32_t step = packed(3, 0, 59, 20) + 65536;
    EXPECT_EQ(unpackTmsf(step).track, 3);
    EXPECT_EQ(unpackTmsf(step).sectors, 4500 + 20);
    EXPECT_EQ(sectorOf(kTracks, step), 412 + 4500 + 20);
}

/// MEDIA-48: Places count as drives count them: a second taken below 0, frames of 50 and more, tracks that the disc
///     lacks
TEST(CdArithmetic, BackAtSecondZeroIsSecondFiftyNineOfTheMinuteBefore) {
    for (const std::uint32_t frame : {0U, 1U, 74U}) {
        const std::int32_t back = packed(3, 1, 0, frame) - 65536;
        EXPECT_EQ(unpackTmsf(back).track, 3) << frame;
        EXPECT_EQ(unpackTmsf(back).sectors, 59 * 75 + static_cast<int>(frame)) << frame;
    }
}

/// MEDIA-19: A place outside the track is held at its start or end
TEST(CdArithmetic, BeforeTheTrackIsItsStartAndBeyondItsEnd) {
    EXPECT_EQ(sectorOf(kTracks, packed(2, 0, 0, 30) - 65536), 225);
    EXPECT_EQ(sectorOf(kTracks, packed(2, 0, 40, 0)), 412);
    EXPECT_EQ(sectorOf(kTracks, packed(2, 0, 2, 36)), 411);
}

/// MEDIA-48
TEST(CdArithmetic, ATrackTheDiscLacksIsTheNearestEnd) {
    EXPECT_EQ(sectorOf(kTracks, packed(0, 1, 0, 0)), 0);
    EXPECT_EQ(sectorOf(kTracks, packed(4, 0, 0, 0)), 9412);
    EXPECT_EQ(sectorOf({}, packed(1, 0, 0, 0)), 0);
}

/// MEDIA-48
TEST(CdArithmetic, ASectorIsReadInTheTrackThatSounds) {
    EXPECT_EQ(tmsfOf(kTracks, 224), packed(1, 0, 2, 74));
    EXPECT_EQ(tmsfOf(kTracks, 225), packed(2, 0, 0, 0));
    EXPECT_EQ(tmsfOf(kTracks, 412 + 4500 + 75 + 3), packed(3, 1, 1, 3));
    EXPECT_EQ(tmsfOf(kTracks, 9412), packed(3, 2, 0, 0));
    EXPECT_EQ(tmsfOf({}, 3), 0);
}

}  // namespace
}  // namespace corvane
