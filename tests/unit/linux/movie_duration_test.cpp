// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_duration.h"

#include <gtest/gtest.h>

#include <atomic>

#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

/// One second of silence as MPEG audio, layer II: 32 kbit/s at 32 kHz, 36 ms a frame.
std::string bareSound() {
    constexpr std::size_t kFrameBytes = 144;
    std::string frame("\xFF\xFD\x18\xC0", 4);
    frame.resize(kFrameBytes, '\0');
    std::string sound;
    for (int i = 0; i < 28; ++i) sound += frame;
    return sound;
}

class CountedLength : public testing::Test {
protected:
    std::optional<double> of(const std::string& name) const {
        return countedLength(folder.in(name), std::atomic<bool>{false});
    }
    test::TemporaryFolder folder;
};

/// What a file is named says nothing of what it holds.
TEST_F(CountedLength, NoFormatThatNamesOtherFilesIsOpened) {
    folder.write("other.mp3", bareSound());
    ASSERT_TRUE(of("other.mp3").has_value());
    EXPECT_NEAR(*of("other.mp3"), 1.0, 0.1);
    folder.write("list.mp3", "ffconcat version 1.0\nfile other.mp3\nfile other.mp3\n");
    EXPECT_EQ(of("list.mp3"), std::nullopt);
    folder.write("play.mp3", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.mp3\n#EXT-X-ENDLIST\n");
    EXPECT_EQ(of("play.mp3"), std::nullopt);
}

TEST_F(CountedLength, OnlyFormatsThatSayNothingCertainAreGuessed) {
    for (const char* const bare : {"mp3", "h264", "mpegvideo", "ac3"}) EXPECT_TRUE(lengthIsGuessed(bare, 1U << 30U));
    for (const char* const told : {"wav", "matroska", "", "mp", "mp3,aac", "concat"}) {
        EXPECT_FALSE(lengthIsGuessed(told, 0)) << told;
    }
    EXPECT_TRUE(lengthIsGuessed("mpeg", 64U << 20U));
    EXPECT_FALSE(lengthIsGuessed("mpeg", (64U << 20U) + 1));
}

}  // namespace
}  // namespace corvane
