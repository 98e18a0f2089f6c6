// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/file_patterns.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// MEDIA-34
TEST(FilePatterns, MatchWithoutCaseAndAnyOfSeveral) {
    EXPECT_TRUE(matchesAnyPattern("SONG.Mp3", "*.wav;*.mp3"));
    EXPECT_FALSE(matchesAnyPattern("song.mp3x", "*.wav;*.mp3"));
    EXPECT_TRUE(matchesAnyPattern("README", "*.*"));
    EXPECT_TRUE(matchesAnyPattern("a.b.c", "a*c"));
    EXPECT_TRUE(matchesAnyPattern("aXbXc", "a*b*c"));
    EXPECT_FALSE(matchesAnyPattern("aXbX", "a*b*c"));
    EXPECT_TRUE(matchesAnyPattern("file1.ini", "file?.ini"));
    EXPECT_FALSE(matchesAnyPattern("file12.ini", "file?.ini"));
    EXPECT_FALSE(matchesAnyPattern("anything", ""));
    EXPECT_FALSE(matchesAnyPattern("anything", ";"));
}

}  // namespace
}  // namespace corvane
