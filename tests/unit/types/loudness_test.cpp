// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using Tags = std::vector<std::pair<std::string, std::string>>;

LoudnessTags read(const Tags& tags) {
    LoudnessTags taken;
    for (const auto& [name, value] : tags) takeLoudnessTag(taken, name, value);
    return taken;
}
float ofTrack(const Tags& tags) { return loudnessFactor(read(tags), false); }
float ofAlbum(const Tags& tags) { return loudnessFactor(read(tags), true); }
float factor(double decibels) { return static_cast<float>(std::pow(10, decibels / 20)); }

/// LOUD-01: The gain of the track or the album multiplies the samples; without such a tag they stay as they are
TEST(Loudness, TheGainOfTheTrackOrTheAlbum) {
    EXPECT_EQ(ofTrack({}), 1.0F);
    EXPECT_EQ(ofAlbum({{"TITLE", "-6 dB"}}), 1.0F);
    const Tags both{{"REPLAYGAIN_TRACK_GAIN", "-6.02 dB"}, {"replaygain_album_gain", "-12.04 dB"}};
    EXPECT_FLOAT_EQ(ofTrack(both), factor(-6.02));
    EXPECT_FLOAT_EQ(ofAlbum(both), factor(-12.04));
    EXPECT_FLOAT_EQ(ofAlbum({both[0]}), factor(-6.02)) << "the album says nothing";
    EXPECT_FLOAT_EQ(ofTrack({both[1]}), factor(-12.04)) << "the track says nothing";
}

/// LOUD-02: The stated peak never passes full scale; without a stated peak nothing is made louder
TEST(Loudness, ClippingIsPrevented) {
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "+6 dB"}, {"REPLAYGAIN_TRACK_PEAK", "0.25"}}), factor(6));
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "+6 dB"}, {"REPLAYGAIN_TRACK_PEAK", "0.8"}}), 1.25F);
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "0 dB"}, {"REPLAYGAIN_TRACK_PEAK", "1.25"}}), 0.8F)
        << "what was cut off when it was coded comes back above full scale";
    EXPECT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "+6 dB"}}), 1.0F);
    EXPECT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "+6 dB"}, {"REPLAYGAIN_ALBUM_PEAK", "0.1"}}), 1.0F)
        << "the peak is that of what the gain is of";
    EXPECT_EQ(ofTrack({{"R128_TRACK_GAIN", "2560"}}), 1.0F);
}

/// LOUD-03: R128 gains are steps of 1/256 decibel towards a level that lies 5 decibels lower
TEST(Loudness, R128) {
    EXPECT_FLOAT_EQ(ofTrack({{"R128_TRACK_GAIN", "-2560"}}), factor(-5));
    EXPECT_FLOAT_EQ(ofAlbum({{"R128_ALBUM_GAIN", "-3072"}, {"R128_TRACK_GAIN", "-2560"}}), factor(-7));
    EXPECT_FLOAT_EQ(ofTrack({{"R128_TRACK_GAIN", "-2560"}, {"REPLAYGAIN_TRACK_GAIN", "-3 dB"}}), factor(-3))
        << "who states both states the peak with the other one";
}

TEST(Loudness, TextsAsProgramsWriteThem) {
    for (const char* text : {"-6.02 dB", "-6.02dB", " -6.02 DB ", "-6,02 dB", "-6.02", "-06.020 db"})
        EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", text}}), factor(-6.02)) << text;
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "-.5 dB"}}), factor(-0.5));
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "-3.0000000000000000000 dB"}}), factor(-3)) << "20 digits";
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "-64 dB"}}), factor(-64));
}

/// LOUD-04: A tag that makes no sense counts as none
TEST(Loudness, WhatMakesNoSense) {
    for (const char* text : {"", "dB", "-", "-.", ".", "nan", "-inf dB", "-65 dB", "-1e1 dB", "0x10", "- 6 dB",
                             "-6 dBFS", "-6.0.0 dB", "-000000000000000000000000001 dB", "\xFF\xFE"})
        EXPECT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", text}}), 1.0F) << text;
    for (const char* text : {"0", "-0.5", "65", "nan", "0.5 dB", ""})
        EXPECT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "+6 dB"}, {"REPLAYGAIN_TRACK_PEAK", text}}), 1.0F) << text;
    for (const char* text : {"-32769", "-20000", "-2560 dB", "x", ""})
        EXPECT_EQ(ofTrack({{"R128_TRACK_GAIN", text}}), 1.0F) << text;
}

TEST(Loudness, OfSeveralTheLastCounts) {
    EXPECT_FLOAT_EQ(ofTrack({{"REPLAYGAIN_TRACK_GAIN", "-3 dB"}, {"REPLAYGAIN_TRACK_GAIN", "-6 dB"}}), factor(-6));
}

}  // namespace
}  // namespace corvane
