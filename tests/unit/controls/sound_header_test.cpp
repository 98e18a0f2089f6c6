// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/sound_header.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "unit/controls/sound_bytes.h"

namespace corvane {
namespace {

using test::bytesOfWave;
using test::isTried;
using test::little;

std::string big(std::uint32_t value, std::size_t size) {
    const std::string bytes = little(value, size);
    return {bytes.rbegin(), bytes.rend()};
}

using namespace std::string_literals;

/// The system's players reckon with whatever a header says, some of them for good.
/// WIN-61: Sounds whose headers tell of nothing that could be are handed to none of the system's players
TEST(SoundHeaders, SamplesThatNoSoundHasAreRefused) {
    EXPECT_TRUE(isTried(bytesOfWave({})));
    EXPECT_TRUE(isTried(bytesOfWave({.channels = 1, .rate = 8000, .align = 1, .bits = 8})));
    EXPECT_TRUE(isTried(bytesOfWave({.tag = 3, .rate = 192000, .align = 8, .bits = 32})));
    EXPECT_TRUE(isTried(bytesOfWave({.tag = 2, .align = 2048, .bits = 4}))) << "packed: its pieces are what they are";
    EXPECT_TRUE(isTried(bytesOfWave({.before = "LIST" + little(5, 4) + "12345\0"s})));
    EXPECT_FALSE(isTried(bytesOfWave({.channels = 0, .align = 0})));
    EXPECT_FALSE(isTried(bytesOfWave({.channels = 65535, .align = 65535})));
    EXPECT_FALSE(isTried(bytesOfWave({.channels = 65535, .align = 65535, .kind = "RF64"})));
    EXPECT_FALSE(isTried(bytesOfWave({.tag = 0xFFFE, .channels = 65535})));
    EXPECT_FALSE(isTried(bytesOfWave({.rate = 0})));
    EXPECT_FALSE(isTried(bytesOfWave({.rate = 0xFFFFFFFF})));
    EXPECT_FALSE(isTried(bytesOfWave({.align = 0})));
    EXPECT_FALSE(isTried(bytesOfWave({.align = 3})));
    EXPECT_FALSE(isTried(bytesOfWave({.tag = 2, .align = 0})));
    EXPECT_FALSE(isTried(bytesOfWave({.bits = 0})));
    std::string many;
    for (int i = 0; i < 1000; ++i) many += "LIST" + little(0, 4);
    EXPECT_FALSE(isTried(bytesOfWave({.before = many})));
    const std::string whole = bytesOfWave({});
    for (std::size_t length = 12; length < whole.find("data"); ++length) EXPECT_FALSE(isTried(whole.substr(0, length)));
}

/// WIN-61
TEST(SoundHeaders, TheOtherFilesOfSamplesAreLookedAtAsWell) {
    const auto au = [](std::uint32_t rate, std::uint32_t channels) {
        return ".snd" + big(24, 4) + big(100, 4) + big(3, 4) + big(rate, 4) + big(channels, 4);
    };
    EXPECT_TRUE(isTried(au(8000, 1)));
    EXPECT_FALSE(isTried(au(0, 1)));
    EXPECT_FALSE(isTried(au(8000, 0xFFFFFFFF)));
    EXPECT_FALSE(isTried(".snd"));
    const auto aiff = [](std::uint32_t channels, const std::string& rate, std::uint32_t bits = 16) {
        return "FORM" + big(1000, 4) + "AIFFCOMM" + big(18, 4) + big(channels, 2) + big(100, 4) + big(bits, 2) + rate;
    };
    const std::string usual = "\x40\x0E\xAC\x44\0\0\0\0\0\0"s;  // 44100
    EXPECT_TRUE(isTried(aiff(2, usual)));
    EXPECT_FALSE(isTried(aiff(0, usual)));
    EXPECT_FALSE(isTried(aiff(65535, usual)));
    EXPECT_FALSE(isTried(aiff(2, usual, 65535)));
    EXPECT_FALSE(isTried(aiff(2, std::string(10, '\0'))));
    EXPECT_FALSE(isTried(aiff(2, std::string(10, '\xFF'))));
    EXPECT_FALSE(isTried("FORM....AIFFSSND"));
    EXPECT_TRUE(isTried("ID3\x04")) << "nothing is known of it";
    EXPECT_TRUE(isTried(""));
}

std::string frames(const std::string& header, std::size_t length, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += header + std::string(length - header.size(), '\0');
    return all;
}

/// A crowd of headers that lead nowhere keeps a decoder looking for the next one.
/// WIN-61
TEST(SoundHeaders, FramesThatLeadNowhereAreRefused) {
    EXPECT_TRUE(isTried(frames("\xFF\xFB\x90\x00"s, 417, 3))) << "layer III, 128, 44100";
    EXPECT_TRUE(isTried(frames("\xFF\xFB\x90\x00"s, 417, 1))) << "a single one";
    EXPECT_TRUE(isTried(frames("\xFF\xF3\x80\x00"s, 208, 3))) << "the second version, 64, 22050";
    EXPECT_TRUE(isTried(frames("\xFF\xFD\xA4\x00"s, 576, 3))) << "layer II, 192, 48000";
    EXPECT_TRUE(isTried(frames("\xFF\xFF\xC4\x00"s, 384, 3))) << "layer I, 384, 48000";
    EXPECT_TRUE(isTried(frames("\xFF\xFB\x00\x00"s, 500, 3))) << "of a free rate";
    EXPECT_TRUE(isTried("\xFF\xFB\x90\x00junk" + frames("\xFF\xFB\x90\x00"s, 417, 3))) << "cut out of a stream";
    EXPECT_TRUE(isTried("ID3\x04\0\0\0\0\x01\x02"s + std::string(130, 'x') + frames("\xFF\xFB\x90\x00"s, 417, 2)));
    EXPECT_TRUE(isTried("\xFF\xF1\x50\x80\x02\x1F\xFC"s)) << "another kind: its frames are not known here";
    std::string crowd;
    while (crowd.size() < 100'000) crowd += "\xFF\xFB\x90\x00"s;
    EXPECT_FALSE(isTried(crowd));
    EXPECT_FALSE(isTried("ID3\x04\0\0\0\0\x01\x02"s + std::string(130, 'x') + crowd));
    EXPECT_FALSE(isTried(std::string(100'000, '\xFF')));
}

/// WIN-61
TEST(SoundHeaders, AFrameOfEachRateLeadsToTheNext) {
    struct Kind {
        const char* name;
        unsigned version, layer;  ///< bits of the header
        unsigned perSecond, factor, step;
        std::array<unsigned, 14> rates;
    };
    const std::array<Kind, 6> kinds = {{
        {"first, I", 3, 3, 44100, 12, 4, {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448}},
        {"first, II", 3, 2, 44100, 144, 1, {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384}},
        {"first, III", 3, 1, 44100, 144, 1, {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
        {"second, I", 2, 3, 22050, 12, 4, {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256}},
        {"second, II", 2, 2, 22050, 144, 1, {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
        {"second, III", 2, 1, 22050, 72, 1, {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
    }};
    for (const Kind& kind : kinds) {
        for (std::size_t i = 0; i < kind.rates.size(); ++i) {
            const auto head = 0xFFE00000U | kind.version << 19U | kind.layer << 17U | 1U << 16U |
                              static_cast<std::uint32_t>(i + 1) << 12U;
            const std::size_t length = kind.factor * kind.rates[i] * 1000U / kind.perSecond * kind.step;
            EXPECT_TRUE(isTried(frames(big(head, 4), length, 2))) << kind.name << ' ' << kind.rates[i];
            EXPECT_FALSE(isTried(frames(big(head, 4), length + 1, 2))) << kind.name << ' ' << kind.rates[i];
        }
    }
}

/// WIN-61
TEST(SoundHeaders, TheFormatIsLookedForInSoManyPiecesAndBehindAWholeTag) {
    std::string pieces;
    for (int i = 0; i < 255; ++i) pieces += "LIST" + little(0, 4);
    EXPECT_TRUE(isTried(bytesOfWave({.before = pieces})));
    EXPECT_FALSE(isTried(bytesOfWave({.before = pieces + "LIST" + little(0, 4)})));
    const std::string tag = "ID3\x04\0\0\0\0\x01\x02"s;
    std::string crowd;
    while (crowd.size() < 100'000) crowd += "\xFF\xFB\x90\x00"s;
    EXPECT_FALSE(isTried(tag + std::string(130, 'x') + crowd));
    EXPECT_TRUE(isTried(tag + std::string(131, 'x') + crowd)) << "it begins in front of them: no frame stands there";
}

}  // namespace
}  // namespace corvane
