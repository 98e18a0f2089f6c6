// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/track_text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// MOVIE-39: Subtitles are gone through from none to the last one and to none again, sounds round and round
TEST(TrackText, SubtitlesCanBeNoneAndSoundsCannot) {
    EXPECT_EQ(trackBehind(2, std::nullopt, true), 0U);
    EXPECT_EQ(trackBehind(2, 0, true), 1U);
    EXPECT_EQ(trackBehind(2, 1, true), std::nullopt);
    EXPECT_EQ(trackBehind(2, 1, false), 0U);
    EXPECT_EQ(trackBehind(1, 0, false), 0U);
    EXPECT_EQ(trackBehind(0, std::nullopt, true), std::nullopt);
    EXPECT_EQ(trackBehind(0, std::nullopt, false), std::nullopt);
}

/// MOVIE-39
TEST(TrackText, SaysWhichTrackWasChosen) {
    const std::vector<TrackName> two{{"", "eng"}, {"\xE6\x97\xA5\xE6\x9C\xAC", "jpn"}};
    EXPECT_EQ(subtitlesText(two, 0), "Subtitles 1 of 2: eng");
    EXPECT_EQ(subtitlesText(two, 1), "Subtitles 2 of 2: \xE6\x97\xA5\xE6\x9C\xAC (jpn)");
    EXPECT_EQ(subtitlesText(two, std::nullopt), "Subtitles off");
    EXPECT_EQ(subtitlesText({}, std::nullopt), "No subtitles");
    EXPECT_EQ(soundsText(two, 1), "Sound 2 of 2: \xE6\x97\xA5\xE6\x9C\xAC (jpn)");
    EXPECT_EQ(soundsText({{"", ""}}, 0), "No other sound");
    EXPECT_EQ(soundsText({}, std::nullopt), "No sound");
    EXPECT_EQ(subtitlesText({{"a\nb\x1B", ""}}, 0), "Subtitles 1 of 1: a b") << "one harmless line";
}

}  // namespace
}  // namespace corvane
