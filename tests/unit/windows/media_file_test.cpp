// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media_file.h"

#include <gtest/gtest.h>

#include "contract/windows/media_rig.h"
#include "shell/media/sound_header.h"

namespace corvane {
namespace {

using namespace std::string_literals;

/// WIN-18
TEST(MediaFile, OneThatCannotBeReadIsRefused) {
    EXPECT_EQ(contentOfFile(L"C:\\there\\is\\no\\such.wav"), MediaContent::Missing);
}

std::string little(std::uint32_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8U * i & 0xFFU);
    return bytes;
}

std::string big(std::uint32_t value, std::size_t size) {
    const std::string bytes = little(value, size);
    return {bytes.rbegin(), bytes.rend()};
}

using namespace std::string_literals;

struct Wave {
    std::uint32_t tag = 1;
    std::uint32_t channels = 2;
    std::uint32_t rate = 44100;
    std::uint32_t align = 4;
    std::uint32_t bits = 16;
    std::string kind = "RIFF";
    std::string before = {};
};

std::string bytesOfWave(const Wave& wave) {
    return wave.kind + "\xFF\xFF\xFF\xFFWAVE" + wave.before + "fmt " + little(16, 4) + little(wave.tag, 2) +
           little(wave.channels, 2) + little(wave.rate, 4) + little(wave.rate * wave.align, 4) + little(wave.align, 2) +
           little(wave.bits, 2) + "data" + little(0xFFFFFFF0, 4);
}

bool isTried(const std::string& file) {
    return refusalOfSamples([&file](std::uint64_t place, std::size_t count) {
               return place < file.size() ? file.substr(static_cast<std::size_t>(place), count) : std::string();
           })
        .empty();
}

/// The system's players reckon with whatever a header says, some of them for good.
/// WIN-61: Sounds whose headers tell of nothing that could be are handed to none of the system's players
TEST(MediaFile, SamplesThatNoSoundHasAreRefused) {
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
TEST(MediaFile, TheOtherFilesOfSamplesAreLookedAtAsWell) {
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
TEST(MediaFile, FramesThatLeadNowhereAreRefused) {
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
    const std::string sample = test::bytesOf(test::sample("waltz.mp3"));
    EXPECT_TRUE(isTried(sample));
}

/// WIN-61
TEST(MediaFile, WhatIsRefusedIsReadFromTheFile) {
    const test::ScratchFolder folder;
    EXPECT_EQ(refusalOfFile(toWide(folder.write("good.wav", bytesOfWave({})))), "");
    EXPECT_NE(refusalOfFile(toWide(folder.write("bad.wav", bytesOfWave({.channels = 65535, .align = 65535})))), "");
    EXPECT_NE(refusalOfFile(toWide(folder.write("list.mp3", "#EXTM3U\r\n"))), "");
    EXPECT_NE(refusalOfFile(L"C:\\there\\is\\no\\such.wav"), "");
}

/// WIN-17
TEST(MediaFile, ALongPathIsGivenShort) {
    const test::ScratchFolder folder;
    const std::wstring brief = toWide(folder.write("a.wav", "x"));
    EXPECT_EQ(pathForMci(brief), brief);
    const std::wstring lengthy = toWide(folder.write(std::string(120, 'n') + ".wav", "RIFF....WAVE"));
    ASSERT_GT(lengthy.size(), 127U);
    const std::wstring given = pathForMci(lengthy);
    EXPECT_LE(given.size(), 127U);
    EXPECT_EQ(contentOfFile(given), MediaContent::Wave);
}

}  // namespace
}  // namespace corvane
