// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_sound.h"

#include <gtest/gtest.h>

#include <cdio/cdio.h>

#include <algorithm>
#include <fstream>

#include "media/discs/cd_disc.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

using test::ImageTrack;
using test::toneOf;

constexpr std::int64_t kSectors1 = 225;
constexpr std::int64_t kSectors2 = 187;
constexpr std::int64_t kSectors3 = 300;
const std::vector<ImageTrack> kThreeTones{{440, kSectors1}, {659.26, kSectors2}, {880, kSectors3}};

std::vector<float> readFrames(SoundBackend& sound, std::size_t count) {
    std::vector<float> samples(count * 2);
    samples.resize(sound.read(samples.data(), count) * 2);
    return samples;
}

/// An image as it is; and what reads drives, with an image of our own in the place of one.
enum class Reading { Image, Drive };

class CdSoundOf : public testing::TestWithParam<Reading> {
protected:
    void SetUp() override {
        const std::string sheet = test::writeImage(folder_.path(), "tones", kThreeTones);
        OpenedDisc opened = GetParam() == Reading::Image ? openDisc(sheet) : openThroughLibrary(sheet, DRIVER_BINCUE);
        ASSERT_TRUE(opened.disc) << opened.reason;
        sound_ = std::make_unique<CdSound>(std::move(opened.disc));
    }

    test::ScratchFolder folder_;
    std::unique_ptr<CdSound> sound_;
};

INSTANTIATE_TEST_SUITE_P(Readings, CdSoundOf, testing::Values(Reading::Image, Reading::Drive));

/// MEDIA-45: Each track sounds as it is on the disc, from its first frame to the one before the next track, and the
///     disc ends exactly
TEST_P(CdSoundOf, TracksComeInOrderWithTheirLengths) {
    EXPECT_EQ(sound_->trackLength(1), 3 << 8);
    EXPECT_EQ(sound_->trackLength(2), 2 << 8 | 37 << 16);
    EXPECT_EQ(sound_->trackLength(3), 4 << 8);
    EXPECT_EQ(sound_->trackLength(4), 0);
    EXPECT_EQ(sound_->frames(), (kSectors1 + kSectors2 + kSectors3) * kCdFramesPerSector);
}

/// MEDIA-45
TEST_P(CdSoundOf, EachTrackSoundsItsTone) {
    const double tones[] = {440, 659.26, 880};
    for (int track = 1; track <= 3; ++track) {
        sound_->seek(sound_->fromTmsf(track));
        EXPECT_NEAR(toneOf(readFrames(*sound_, kCdSampleRate)), tones[track - 1], 1) << track;
    }
}

/// MEDIA-45
TEST_P(CdSoundOf, TheTracksEndIsTheFrameBeforeTheNextTone) {
    const std::int64_t end = sound_->fromTmsf(sound_->trackLength(1) * 256 + 1);
    EXPECT_EQ(end, kSectors1 * kCdFramesPerSector);
    sound_->seek(end - 4410);
    EXPECT_NEAR(toneOf(readFrames(*sound_, 4410)), 440, 2);
    EXPECT_NEAR(toneOf(readFrames(*sound_, 4410)), 659.26, 2);
}

/// MEDIA-45
TEST_P(CdSoundOf, ASeekWithinATrackLandsOnItsFrame) {
    const std::int32_t target = 3 | 1 << 16 | 10 << 24;  // track 3, second 1, frame 10
    const std::int64_t frame = sound_->fromTmsf(target);
    EXPECT_EQ(frame, (kSectors1 + kSectors2 + 85) * kCdFramesPerSector);
    EXPECT_EQ(sound_->toTmsf(frame), target);
    sound_->seek(frame + 100);
    const std::vector<float> read = readFrames(*sound_, 50);
    ASSERT_EQ(read.size(), 100U);
    for (int i = 0; i < 50; ++i) {
        const double phase = 2 * std::numbers::pi * 880 * (85.0 * kCdFramesPerSector + 100 + i) / kCdSampleRate;
        EXPECT_NEAR(read[static_cast<std::size_t>(i) * 2], 0.5 * std::sin(phase), 1e-4) << i;
    }
}

/// MEDIA-45
TEST_P(CdSoundOf, TheDiscEndsExactly) {
    sound_->seek(sound_->frames() - 1000);
    EXPECT_EQ(readFrames(*sound_, 5000).size(), 2000U);
    EXPECT_EQ(readFrames(*sound_, 5000).size(), 0U);
    sound_->seek(-5);
    EXPECT_EQ(sound_->toTmsf(0), 1);
    EXPECT_EQ(readFrames(*sound_, 10).size(), 20U);
}

/// MEDIA-45
TEST_P(CdSoundOf, AReaderThatIsStoppedComesBackShort) {
    sound_->stopping = true;
    EXPECT_EQ(readFrames(*sound_, 44100).size(), 0U);
    sound_->stopping = false;
    EXPECT_EQ(readFrames(*sound_, 44100).size(), 88200U);
}

/// MEDIA-20: A data track is silent and keeps its place
TEST(CdSound, ADataTrackIsSilentAndKeepsItsPlace) {
    const test::ScratchFolder folder;
    OpenedDisc opened = openDisc(test::writeImage(folder.path(), "mixed", {{0, 100}, {523.25, 150}}));
    ASSERT_TRUE(opened.disc) << opened.reason;
    CdSound sound(std::move(opened.disc));
    EXPECT_EQ(sound.fromTmsf(2), 100 * kCdFramesPerSector);
    EXPECT_NEAR(toneOf(readFrames(sound, 100 * kCdFramesPerSector)), 0, 0);
    EXPECT_NEAR(toneOf(readFrames(sound, kCdSampleRate)), 523.25, 1);
}

/// MEDIA-47: An image that was cut short plays what it holds, and a damaged sheet never ends the program
TEST(CdSound, AnImageCutShortPlaysWhatItHolds) {
    const test::ScratchFolder folder;
    const std::string cue = test::writeImage(folder.path(), "short", kThreeTones);
    std::filesystem::resize_file(folder.path() / "short.bin", (kSectors1 + kSectors2 + 75) * kCdBytesPerSector);
    OpenedDisc opened = openDisc(cue);
    ASSERT_TRUE(opened.disc) << opened.reason;
    CdSound sound(std::move(opened.disc));
    sound.seek(sound.fromTmsf(3));
    EXPECT_NEAR(toneOf(readFrames(sound, kCdSampleRate)), 880, 1);
}

/// MEDIA-21: What is no disc is refused with a reason, and so is every image without a sheet
TEST(CdSound, WhatIsNoDiscIsRefusedWithAReason) {
    const test::ScratchFolder folder;
    EXPECT_FALSE(openDisc((folder.path() / "none.cue").string()).disc);
    EXPECT_NE(openDisc((folder.path() / "none.cue").string()).reason, "");
    for (const char* text : {"", "FILE", "FILE \"a.bin\" BINARY\n", "TRACK 01 AUDIO\n",
                             "FILE \"gone.bin\" BINARY\n TRACK 01 AUDIO\n INDEX 01 00:00:00\n"}) {
        std::ofstream(folder.path() / "bad.cue") << text;
        const OpenedDisc opened = openDisc((folder.path() / "bad.cue").string());
        EXPECT_FALSE(opened.disc) << text;
        EXPECT_NE(opened.reason, "") << text;
    }
    const std::string dataOnly = test::writeImage(folder.path(), "data", {{0, 100}});
    EXPECT_FALSE(openDisc(dataOnly).disc);
}

/// MEDIA-47
TEST(CdSound, DamagedCueSheetsNeverEndTheProgram) {
    const test::ScratchFolder folder;
    const std::string cue = test::writeImage(folder.path(), "tones", {{440, 75}, {880, 75}});
    std::ifstream file(cue);
    const std::string whole =
        "REM " + std::string(200, 'x') + '\n' + std::string((std::istreambuf_iterator<char>(file)), {});
    std::uint32_t number = 1;
    int opens = 0;
    for (int round = 0; round < 600; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 3; ++i) {
            number = number * 1664525U + 1013904223U;
            damaged[number / 65536U % damaged.size()] = static_cast<char>(number >> 8 & 0x7F);
        }
        if (round % 3 == 0) damaged.resize(number / 65536U % damaged.size());
        std::ofstream(cue, std::ios::trunc) << damaged;
        if (const OpenedDisc opened = openDisc(cue); opened.disc) {
            EXPECT_FALSE(opened.disc->tracks().empty());
            ++opens;
        } else {
            EXPECT_NE(opened.reason, "");
        }
    }
    EXPECT_GT(opens, 50) << "most damage leaves nothing to read";
    EXPECT_LT(opens, 400);
}

/// A disc of one track, all of one loudness but for its unreadable sectors.
class ScratchedDisc : public CdDisc {
public:
    ScratchedDisc(std::int64_t sectors, std::int64_t scratchFrom, std::int64_t scratchTo)
        : from_(scratchFrom), to_(scratchTo) {
        tracks_ = {{1, 0, sectors, true}};
    }
    bool readSector(std::int64_t sector, std::int16_t* samples) override {
        std::fill_n(samples, kCdFramesPerSector * 2, std::int16_t{8192});
        return sector < from_ || sector >= to_;
    }

private:
    std::int64_t from_, to_;
};

constexpr std::int64_t kTenSeconds = std::int64_t{10} * kCdSectorsPerSecond;

/// MEDIA-51: Unreadable sectors are silent; behind ten seconds of them the disc ends, until it is sought
TEST(CdSound, AScratchOfTenSecondsIsSilentAndPlaysOn) {
    const std::int64_t sectors = kTenSeconds + 300;
    CdSound sound(std::make_unique<ScratchedDisc>(sectors, 100, 100 + kTenSeconds));
    const std::vector<float> samples = readFrames(sound, static_cast<std::size_t>(sound.frames()));
    ASSERT_EQ(samples.size(), static_cast<std::size_t>(sectors) * kCdFramesPerSector * 2);
    const auto ofSector = [&](std::int64_t sector) {
        return samples[static_cast<std::size_t>(sector) * kCdFramesPerSector * 2];
    };
    EXPECT_FLOAT_EQ(ofSector(99), 0.25F);
    EXPECT_FLOAT_EQ(ofSector(100), 0);
    EXPECT_FLOAT_EQ(ofSector(99 + kTenSeconds), 0);
    EXPECT_FLOAT_EQ(ofSector(100 + kTenSeconds), 0.25F);
}

/// MEDIA-51
TEST(CdSound, ADiscThatWasTakenOutEndsBehindTenSecondsWithoutASound) {
    const std::int64_t sectors = 3 * kTenSeconds;
    CdSound sound(std::make_unique<ScratchedDisc>(sectors, 200, sectors));
    const auto heard =
        static_cast<std::int64_t>(readFrames(sound, static_cast<std::size_t>(sound.frames())).size()) / 2;
    EXPECT_GE(heard, (200 + kTenSeconds - kCdSectorsPerSecond) * kCdFramesPerSector);
    EXPECT_LE(heard, (200 + kTenSeconds + kCdSectorsPerSecond) * kCdFramesPerSector);
    sound.seek(0);
    EXPECT_EQ(readFrames(sound, 4410).size(), 8820U) << "sought, it is read afresh";
}

}  // namespace
}  // namespace corvane
