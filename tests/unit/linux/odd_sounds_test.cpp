// SPDX-License-Identifier: GPL-3.0-or-later
// Sound files whose headers say what cannot be, that end too early, never end, grow or shrink: each is refused with a
// reason or played inside its bounds, in bounded time and memory.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <limits>
#include <sstream>
#include <vector>

#include "media/sound/file_sound.h"
#include "unit/linux/memory_peak.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds kDeadline{20};
constexpr long kMostMegabytes = 150;
constexpr std::size_t kRead = 100'000;  ///< frames
constexpr off_t kHuge = off_t{20} << 30;

std::string little(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    return text;
}
std::string big(std::uint64_t value, int bytes) {
    const std::string text = little(value, bytes);
    return {text.rbegin(), text.rend()};
}

struct Wave {
    std::uint32_t channels = 2, rate = 44100, align = 4, bits = 16, bytes = 400, riff = 436, tag = 1;

    std::string file() const {
        return "RIFF" + little(riff, 4) + "WAVEfmt " + little(16, 4) + little(tag, 2) + little(channels, 2) +
               little(rate, 4) + little(std::uint64_t{rate} * align, 4) + little(align, 2) + little(bits, 2) + "data" +
               little(bytes, 4) + std::string(400, '\x21');
    }
};

class OddSounds : public ::testing::Test {
protected:
    OddSounds() { test::offscreenApplication(); }

    /// Opens, reads from the front, the middle and behind the end, and measures: all inside the bounds.
    void expectHarmless(const std::string& what) {
        const test::MemoryPeak memory;
        const auto begin = Clock::now();
        OpenedSound opened = FileSound::open(path());
        if (!opened.sound) {
            EXPECT_NE(opened.reason, "") << what;
        } else {
            SoundBackend& sound = *opened.sound;
            expectInside(sound, what);
            const auto width = static_cast<std::size_t>(sound.format().channels);
            std::vector<float> samples(kRead * width);
            sound.read(samples.data(), kRead);
            sound.measure();
            expectInside(sound, what);
            sound.seek(sound.frames() / 2);
            sound.read(samples.data(), kRead);
            sound.seek(std::numeric_limits<std::int64_t>::max());
            EXPECT_EQ(sound.read(samples.data(), kRead), 0U) << what;
        }
        EXPECT_LT(Clock::now() - begin, kDeadline) << what;
        EXPECT_LT(memory.megabytes(), kMostMegabytes) << what;
    }
    static void expectInside(const SoundBackend& sound, const std::string& what) {
        const PcmFormat format = sound.format();
        EXPECT_TRUE(format.rate >= 1'000 && format.rate <= 192'000) << what << ": " << format.rate;
        EXPECT_TRUE(format.channels >= 1 && format.channels <= 8) << what << ": " << format.channels;
        EXPECT_TRUE(sound.frames() >= 0 && sound.frames() <= kMostSeconds * format.rate)
            << what << ": " << sound.frames();
    }
    void put(const std::string& bytes) { folder_.write("a", bytes); }
    void expectHarmless(const std::string& what, const std::string& bytes) {
        put(bytes);
        expectHarmless(what);
    }
    std::string path() const { return folder_.in("a"); }

    test::TemporaryFolder folder_;
};

/// FAULT-60: Sound files that say what cannot be, end too early, never end, grow or shrink are refused or played inside
///     their bounds
TEST_F(OddSounds, RatesAndChannels) {
    for (const std::uint32_t rate :
         {0U, 1U, 99U, 100U, 999U, 192'001U, 1'536'000U, 1'536'001U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (const std::uint32_t channels : {0U, 1U, 3U, 8U, 9U, 64U, 65U, 0xFFFFU}) {
            const Wave wave{.channels = channels, .rate = rate, .align = channels * 2 & 0xFFFFU};
            expectHarmless(std::to_string(channels) + " channels at " + std::to_string(rate), wave.file());
        }
    }
}

/// FAULT-60
TEST_F(OddSounds, WidthsKindsAndLengths) {
    for (const std::uint32_t length : {0U, 1U, 399U, 401U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        expectHarmless("bytes " + std::to_string(length), Wave{.bytes = length}.file());
        expectHarmless("riff " + std::to_string(length), Wave{.riff = length}.file());
    }
    for (const std::uint32_t word : {0U, 1U, 3U, 7U, 33U, 64U, 255U, 0xFFFFU}) {
        expectHarmless("align " + std::to_string(word), Wave{.align = word}.file());
        expectHarmless("bits " + std::to_string(word), Wave{.bits = word}.file());
        expectHarmless("tag " + std::to_string(word), Wave{.tag = word}.file());
    }
}

/// FAULT-60
TEST_F(OddSounds, OtherHeaders) {
    for (const std::uint64_t length : {0ULL, 1ULL, 1ULL << 31U, 1ULL << 63U, ~0ULL}) {
        const std::string body(600, '\x11');
        for (const std::uint64_t rate : {0ULL, 1ULL, 44100ULL, 1ULL << 31U}) {
            expectHarmless("au", ".snd" + big(24, 4) + big(length, 4) + big(3, 4) + big(rate, 4) + big(64, 4) + body);
            expectHarmless("caf", "caff" + big(1, 2) + big(0, 2) + "desc" + big(32, 8) +
                                      big(0x40E5888000000000ULL + rate, 8) + "lpcm" + big(0, 4) + big(length, 4) +
                                      big(1, 4) + big(2, 4) + big(16, 4) + "data" + big(length, 8) + body);
        }
        expectHarmless(
            "w64", "riff\x2E\x91\xCF\x11\xA5\xD6\x28\xDB\x04\xC1" + std::string(2, '\0') + little(length, 8) + body);
        expectHarmless("aiff", "FORM" + big(length, 4) + "AIFFCOMM" + big(18, 4) + big(2, 2) + big(length, 4) +
                                   big(16, 2) + big(0x7FFF, 2) + big(length, 8) + "SSND" + big(length, 4) + body);
        expectHarmless("mp4",
                       big(24, 4) + "ftypisom" + big(0, 4) + "isomisom" + big(1, 4) + "moov" + big(length, 8) + body);
    }
}

/// FAULT-60
TEST_F(OddSounds, ADampedRateKeepsItsLength) {
    put(Wave{.channels = 1, .rate = 200, .align = 1, .bits = 8}.file());
    OpenedSound opened = FileSound::open(path());
    ASSERT_TRUE(opened.sound) << opened.reason;
    EXPECT_EQ(opened.sound->format().rate, 1'000);
    EXPECT_EQ(opened.sound->frames(), 2'000) << "400 samples at 200 a second";
    std::vector<float> samples(4'000);
    EXPECT_NEAR(static_cast<double>(opened.sound->read(samples.data(), samples.size())), 2'000, 100);
}

/// FAULT-60
TEST_F(OddSounds, AnythingCutShort) {
    const std::string folder = std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/";
    for (const char* const name :
         {"tone.flac", "tone.m4a", "tone.ogg", "tone.rm", "ima.wav", "vbr_headed.mp3", "tone.aiff"}) {
        std::ostringstream all;
        all << std::ifstream(folder + name, std::ios::binary).rdbuf();
        const std::string bytes = all.str();
        ASSERT_GT(bytes.size(), 1000U) << name;
        for (const std::size_t length :
             {std::size_t{1}, std::size_t{11}, std::size_t{45}, std::size_t{200}, bytes.size() / 2, bytes.size() - 1})
            expectHarmless(name, bytes.substr(0, length));
    }
}

/// A file of nothing, 20 GB long, behind a beginning that promises more.
/// FAULT-60
TEST_F(OddSounds, WhatNeverEndsIsGivenUpBySizeAndAtOnceWhenAsked) {
    for (const std::string& head :
         {Wave{.bytes = 0xFFFFFFFF}.file(), std::string("\x1A\x45\xDF\xA3\x93\x42\x82\x88matroska\x42\x87\x81\x02"),
          std::string("OggS"), std::string("ID3\x04\x00\x00\x7F\x7F\x7F\x7F", 10), std::string("fLaC"),
          std::string("RIFF\xFF\xFF\xFF\xFF"
                      "AVI LIST"),
          std::string("\0\0\0\x18"
                      "ftypisom\0\0\0\0isomisom",
                      24),
          std::string("\xFF\xFB\x90\x64")}) {
        put(head);
        ASSERT_EQ(truncate(path().c_str(), kHuge), 0);
        const test::MemoryPeak memory;
        const auto flag = std::make_shared<std::atomic<bool>>(false);
        const auto begin = Clock::now();
        OpenedSound opened = FileSound::open(path(), flag);
        EXPECT_LT(Clock::now() - begin, kDeadline) << head.substr(0, 4);
        if (opened.sound) {
            auto measured = std::async(std::launch::async, [&opened] { opened.sound->measure(); });
            measured.wait_for(milliseconds(200));
            const test::Stopwatch clock;
            *flag = true;
            EXPECT_EQ(measured.wait_for(seconds(20)), std::future_status::ready) << head.substr(0, 4);
            EXPECT_LT(clock.own(), seconds(2)) << head.substr(0, 4);
        }
        EXPECT_LT(memory.megabytes(), kMostMegabytes) << head.substr(0, 4);
    }
}

/// FAULT-60
TEST_F(OddSounds, AFileThatGrowsOrShrinksWhileItPlays) {
    const std::string tone = std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/pcm.wav";
    std::filesystem::copy_file(tone, path());
    const auto size = static_cast<off_t>(std::filesystem::file_size(path()));
    std::vector<float> samples(2'000'000);
    for (const off_t then : {size / 3, off_t{0}, size * 10}) {
        ASSERT_EQ(truncate(path().c_str(), size), 0);
        OpenedSound opened = FileSound::open(path());
        ASSERT_TRUE(opened.sound) << opened.reason;
        const auto frames = static_cast<std::size_t>(opened.sound->frames());
        opened.sound->read(samples.data(), 100);
        ASSERT_EQ(truncate(path().c_str(), then), 0);
        EXPECT_LE(opened.sound->read(samples.data(), 500'000) + 100, frames) << then;
        opened.sound->measure();
        opened.sound->seek(0);
        opened.sound->read(samples.data(), 500'000);
        std::filesystem::copy_file(tone, path(), std::filesystem::copy_options::overwrite_existing);
    }
}

/// A good FLAC file with so many comments of that form, in which # is a number that goes down.
std::string crowdedFlac(const std::string& form, int count) {
    std::ostringstream plain;
    plain << std::ifstream(std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/tone.flac", std::ios::binary).rdbuf();
    const std::string flac = plain.str();
    constexpr std::size_t kBlock = 4 + 4;  // behind "fLaC" and the first block's head
    const std::size_t about = 34;          // bytes that tell of its samples
    std::string comments = little(0, 4) + little(static_cast<std::uint64_t>(count), 4);
    for (int i = count; i > 0; --i) {
        std::string comment = form;
        if (const std::size_t at = form.find('#'); at != std::string::npos) comment.replace(at, 1, std::to_string(i));
        comments += little(comment.size(), 4) + comment;
    }
    std::size_t samples = 4;
    for (bool last = false; !last && samples + 4 < flac.size();) {
        const auto byte = [&](std::size_t at) { return std::size_t{static_cast<unsigned char>(flac[samples + at])}; };
        last = byte(0) >= 0x80;
        samples += 4 + (byte(1) << 16U | byte(2) << 8U | byte(3));
    }
    return std::string("fLaC\0", 5) + big(about, 3) + flac.substr(kBlock, about) + "\x84" + big(comments.size(), 3) +
           comments + flac.substr(samples);
}
std::string crowdedMp3(const std::string& id, const std::string& content, int count) {
    std::string frames;
    for (int i = 0; i < count; ++i) {
        const std::string data = "n" + std::to_string(i) + content;
        frames += id + big(data.size(), 4) + std::string(2, '\0') + data;
    }
    std::string size;
    for (int i = 3; i >= 0; --i) size.push_back(static_cast<char>(frames.size() >> (7 * i) & 0x7FU));
    std::ostringstream plain;
    plain
        << std::ifstream(std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/cbr_bare.mp3", std::ios::binary).rdbuf();
    return std::string("ID3\x03\0\0", 6) + size + frames + plain.str();
}

/// FAULT-67: A sound with half a million tags or chapters ends soon, and one with many tags is played
TEST_F(OddSounds, CrowdsOfTagsAndChapters) {
    constexpr int kMany = 500'000;
    const std::string nothing(20, '\0');
    for (const auto& [what, file] : std::vector<std::pair<const char*, std::string>>{
             {"names", crowdedFlac("#=v", kMany)},
             {"one name", crowdedFlac("a=bcdefg", kMany)},
             {"texts", crowdedMp3("TXXX", std::string("\0v", 2), kMany)}}) {
        expectHarmless(what, file);
        EXPECT_TRUE(FileSound::open(path()).sound) << what;
    }
    for (const auto& [what, file] : std::vector<std::pair<const char*, std::string>>{
             {"chapters", crowdedMp3("CHAP", nothing, kMany)},
             {"private ones", crowdedMp3("PRIV", nothing, kMany)},
             {"files", crowdedMp3("GEOB", nothing, kMany)},
             {"chapters that go down", crowdedFlac("Chapter#=00:00:00.000", kMany)}}) {
        expectHarmless(what, file);
        EXPECT_EQ(FileSound::open(path()).reason, "The file tells too much beside its sound.") << what;
    }
    put(crowdedMp3("CHAP", nothing, 1'000));
    EXPECT_TRUE(FileSound::open(path()).sound) << "many chapters";
}

/// MEDIA-73: A sound file is opened once; it is measured and begun anew as the file that was opened
TEST(SoundOpenedOnce, IsMeasuredAndBegunAnewAsTheFileThatWasOpened) {
    const std::string original = std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/vbr_bare.mp3";
    const test::TemporaryFolder folder;
    const std::string path = folder.in("a.mp3");
    std::filesystem::copy_file(original, path);
    OpenedSound kept = FileSound::open(original);
    OpenedSound opened = FileSound::open(path);
    ASSERT_TRUE(kept.sound && opened.sound) << opened.reason;
    folder.write("other", "no sound");
    std::filesystem::rename(folder.in("other"), path);

    kept.sound->measure();
    opened.sound->measure();
    EXPECT_TRUE(opened.sound->lengthKnown());
    EXPECT_EQ(opened.sound->frames(), kept.sound->frames());
    static constexpr std::size_t kFrames = 1000;
    const auto begunAnew = [](SoundBackend& sound) {
        std::vector<float> samples(kFrames * static_cast<std::size_t>(sound.format().channels));
        sound.read(samples.data(), kFrames);
        sound.seek(0);
        EXPECT_EQ(sound.read(samples.data(), kFrames), kFrames);
        return samples;
    };
    EXPECT_EQ(begunAnew(*opened.sound), begunAnew(*kept.sound));
}

}  // namespace
}  // namespace corvane
