// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_image.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <future>

#include "contract/linux/mci_rig.h"
#include "media/discs/cd_sound.h"
#include "media/sound/file_sound.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

const std::string kWhole = "TRACK 01 AUDIO\nINDEX 01 00:00:00\n";

std::string number(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    return text;
}

/// A WAVE file of one tone. `told`: the bytes of sound that its header tells of, where it lies.
std::string wave(double hertz, double seconds, int rate = 44100, int channels = 2,
                 std::optional<std::uint32_t> told = std::nullopt) {
    std::string samples;
    for (int frame = 0; frame < static_cast<int>(seconds * rate); ++frame) {
        const double value = 16384 * std::sin(2 * std::numbers::pi * hertz * frame / rate);
        for (int channel = 0; channel < channels; ++channel)
            samples += number(static_cast<std::uint32_t>(std::lround(value)), 2);
    }
    const std::uint32_t bytes = told.value_or(static_cast<std::uint32_t>(samples.size()));
    const auto width = static_cast<std::uint32_t>(channels) * 2;
    return "RIFF" + number(bytes + 36, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
           number(static_cast<std::uint32_t>(channels), 2) + number(static_cast<std::uint32_t>(rate), 4) +
           number(static_cast<std::uint32_t>(rate) * width, 4) + number(width, 2) + number(16, 2) + "data" +
           number(bytes, 4) + samples;
}

class CdImage : public testing::Test {
protected:
    OpenedDisc open(const std::string& sheet) {
        folder.write("disc.cue", sheet);
        return openImage(folder.in("disc.cue"));
    }
    /// Opens it, or tells the failure.
    std::unique_ptr<CdSound> sound(const std::string& sheet) {
        OpenedDisc opened = open(sheet);
        EXPECT_TRUE(opened.disc) << opened.reason;
        return opened.disc ? std::make_unique<CdSound>(std::move(opened.disc), folder.in("disc.cue")) : nullptr;
    }
    static std::vector<float> read(CdSound& sound, double seconds) {
        std::vector<float> samples(static_cast<std::size_t>(seconds * kCdSampleRate) * 2);
        samples.resize(sound.read(samples.data(), samples.size() / 2) * 2);
        return samples;
    }
    test::TemporaryFolder folder;
};

/// MEDIA-63: An image may hold sound files of any kind that is played, at any rate, and raw files with the high byte
///     first
TEST_F(CdImage, SoundFilesAreTheTracksOfADisc) {
    folder.write("one.wav", wave(440, 2));
    folder.write("two.wav", wave(880, 3, 44100, 1));
    const auto disc = sound(
        "FILE one.wav WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE two.wav WAVE\nTRACK 02 AUDIO\n"
        "PREGAP 00:01:00\nINDEX 01 00:00:00\n");
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->trackLength(1), 3 << 8) << "with the gap that belongs to the next one";
    EXPECT_EQ(disc->trackLength(2), 3 << 8);
    disc->seek(disc->fromTmsf(2));
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 880, 1);
    disc->seek(0);
    EXPECT_NEAR(test::toneOf(read(*disc, 2)), 440, 1);
    EXPECT_EQ(test::toneOf(read(*disc, 1)), 0) << "the gap";
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 880, 1) << "on both sides, also of a sound with one";
    EXPECT_EQ(read(*disc, 60).size(), std::size_t{2} * kCdSampleRate * 2) << "it ends exactly";
}

/// MEDIA-63
TEST_F(CdImage, ASeekIntoASoundFileLandsOnItsFrame) {
    folder.write("one.wav", wave(440, 3));
    const auto disc = sound("FILE one.wav WAVE\n" + kWhole);
    ASSERT_TRUE(disc);
    disc->seek(50'000);
    const std::vector<float> samples = read(*disc, 0.01);
    for (std::size_t i = 0; i < samples.size() / 2; ++i) {
        const double phase = 2 * std::numbers::pi * 440 * (50'000.0 + static_cast<double>(i)) / kCdSampleRate;
        ASSERT_NEAR(samples[2 * i], 0.5 * std::sin(phase), 1e-4) << i;
    }
}

/// MEDIA-63
TEST_F(CdImage, ARawFileMayHoldTheHighByteFirst) {
    std::string swapped = wave(440, 2).substr(44);
    for (std::size_t i = 0; i + 1 < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
    folder.write("one.raw", swapped);
    const auto disc = sound("FILE one.raw MOTOROLA\n" + kWhole);
    ASSERT_TRUE(disc);
    const std::vector<float> samples = read(*disc, 1);
    EXPECT_NEAR(test::toneOf(samples), 440, 1);
    EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), 0.5, 0.01);
}

class CdImageOf : public CdImage, public testing::WithParamInterface<const char*> {};

/// MEDIA-63
TEST_P(CdImageOf, WhatSoundFilesAreDecodedByIsReadAtADiscsRate) {
    fs::copy_file(test::soundData(GetParam()), folder.in(GetParam()));
    const auto disc = sound(std::string("FILE \"") + GetParam() + "\" WAVE\n" + kWhole);
    ASSERT_TRUE(disc);
    const double seconds = static_cast<double>(disc->frames()) / kCdSampleRate;
    const auto alone = FileSound::open(test::soundData(GetParam()));
    ASSERT_TRUE(alone.sound);
    alone.sound->measure();
    const double aloneSeconds = static_cast<double>(alone.sound->frames()) / alone.sound->format().rate;
    EXPECT_NEAR(seconds, aloneSeconds, 1.0 / kCdSectorsPerSecond + 1e-3);
    const std::vector<float> whole = read(*disc, seconds);
    ASSERT_EQ(whole.size(), static_cast<std::size_t>(disc->frames()) * 2);
    // Sought, it sounds as it does when it is played up to there.
    for (const double place : {1.5, 0.3, 2.4}) {
        const auto frame = static_cast<std::size_t>(place * kCdSampleRate);
        disc->seek(static_cast<std::int64_t>(frame));
        const std::vector<float> part = read(*disc, 0.1);
        double apart = 0;
        for (std::size_t i = 0; i < part.size(); ++i)
            apart = std::max(apart, std::abs(double{part[i]} - double{whole[frame * 2 + i]}));
        EXPECT_LT(apart, 0.02) << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, CdImageOf,
                         testing::Values("pcm.wav", "tone.flac", "tone.aiff", "vbr_headed.mp3", "cbr_bare.mp3"));

/// MEDIA-63
TEST_F(CdImage, TheSheetBesideARawFileIsTaken) {
    test::writeImage(folder.path(), "tones", {{440, 75}, {880, 75}});
    EXPECT_TRUE(openDisc(folder.in("tones.bin")).disc);
    fs::rename(folder.in("tones.cue"), folder.in("tones.CUE"));
    EXPECT_TRUE(openDisc(folder.in("tones.bin")).disc);
    fs::remove(folder.in("tones.CUE"));
    EXPECT_NE(openDisc(folder.in("tones.bin")).reason, "");
}

/// MEDIA-77
TEST_F(CdImage, WhatASheetNamesMayLieBesideItAsAnotherFile) {
    folder.write("one.WAV", wave(440, 1));
    folder.write("two.aiff", wave(880, 1));
    const std::string text = "FILE ONE.wav WAVE\n" + kWhole + "FILE two.wav WAVE\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n";
    const auto disc = sound(text);
    ASSERT_TRUE(disc);
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 440, 1);
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 880, 1);
    EXPECT_EQ(audioTracksOfImage(folder.in("disc.cue")), (std::vector<int>{1, 2}));
    fs::remove(folder.in("two.aiff"));
    EXPECT_TRUE(audioTracksOfImage(folder.in("disc.cue")).empty()) << "nothing stands for the second";
}

/// MEDIA-77
TEST_F(CdImage, ANameInTheBytesOfTheSheetComesBeforeWhatStandsForIt) {
    folder.write("\xC9t\xE9.wav", wave(440, 1));
    folder.write("disc.flac", wave(880, 1));
    const auto disc = sound("FILE \"\xC9t\xE9.wav\" WAVE\n" + kWhole);
    ASSERT_TRUE(disc);
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 440, 1);
}

/// MEDIA-21
TEST_F(CdImage, OtherImagesAreRefusedWithThatReason) {
    for (const char* const name : {"disc.nrg", "disc.toc", "disc.iso", "disc.ccd", "disc"}) {
        folder.write(name, "CD_DA\nNER5");
        const OpenedDisc opened = openDisc(folder.in(name));
        EXPECT_FALSE(opened.disc);
        EXPECT_EQ(opened.reason.rfind("Of the images of discs, only those with a sheet", 0), 0U) << opened.reason;
    }
}

/// MEDIA-21, MEDIA-61
TEST_F(CdImage, WhatAFileOfTheSheetIsNotIsTold) {
    folder.write("empty.bin", "");
    folder.write("text.wav", "no sound");
    folder.write("disc.bin", std::string(kCdBytesPerSector * 10, 'x'));
    ASSERT_EQ(mkfifo(folder.in("pipe.bin").c_str(), 0600), 0);
    fs::create_directory(folder.in("folder.bin"));
    fs::create_symlink("/dev/zero", folder.in("zero.bin"));
    fs::create_symlink("/proc/kcore", folder.in("memory.bin"));
    fs::create_symlink("loop.bin", folder.in("loop.bin"));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    folder.in("socket.bin").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    const test::Stopwatch clock;
    for (const char* const name : {"empty.bin", "gone.bin", "pipe.bin", "folder.bin", "zero.bin", "memory.bin",
                                   "loop.bin", "socket.bin", "../../../../etc/passwd"}) {
        for (const char* const type : {"BINARY", "WAVE"}) {
            const OpenedDisc opened = open(std::string("FILE \"") + name + "\" " + type + "\n" + kWhole);
            EXPECT_FALSE(opened.disc) << name << ' ' << type;
            EXPECT_NE(opened.reason, "") << name << ' ' << type;
        }
    }
    EXPECT_FALSE(open("FILE text.wav WAVE\n" + kWhole).disc);
    EXPECT_FALSE(open("FILE disc.cue WAVE\n" + kWhole).disc) << "itself";
    EXPECT_FALSE(open("FILE disc.bin BINARY\nTRACK 01 MODE1/2352\nINDEX 01 00:00:00\n").disc) << "data alone";
    EXPECT_LT(clock.own(), std::chrono::seconds(5));
}

/// A reason stands in a box of questions: names make no lines in it.
TEST_F(CdImage, ANameMakesNoLineInAReason) {
    const std::string odd = "x\nThe program must be updated\r\nPress Ignore";
    const auto isOneLine = [](const std::string& reason) {
        return !reason.empty() && reason.find_first_of("\r\n") == std::string::npos;
    };
    fs::create_directory(folder.in(odd));
    folder.write(odd + "/data.bin", std::string(kCdBytesPerSector * 10, 'x'));
    folder.write(odd + "/data.cue", "FILE data.bin BINARY\nTRACK 01 MODE1/2352\nINDEX 01 00:00:00\n");
    folder.write(odd + "/disc.iso", "no disc");
    for (const char* const name : {"/data.cue", "/disc.iso", "/none", ""}) {
        const std::string reason = openDisc(folder.in(odd + name)).reason;
        EXPECT_TRUE(isOneLine(reason)) << name << ": " << reason;
    }
    const std::string reason = openThroughLibrary(folder.in(odd + "/none"), 0).reason;
    EXPECT_TRUE(isOneLine(reason)) << reason;
}

/// MEDIA-21
TEST_F(CdImage, ASheetThatIsNoFileHoldsNobodyUp) {
    ASSERT_EQ(mkfifo(folder.in("pipe.cue").c_str(), 0600), 0);
    fs::create_directory(folder.in("folder.cue"));
    fs::create_symlink("/dev/zero", folder.in("zero.cue"));
    fs::create_symlink("loop.cue", folder.in("loop.cue"));
    std::ofstream(folder.in("giant.cue")).close();
    fs::resize_file(folder.in("giant.cue"), std::uintmax_t{20} << 30);
    const test::Stopwatch clock;
    for (const char* const name : {"pipe.cue", "folder.cue", "zero.cue", "loop.cue", "giant.cue", "gone.cue"}) {
        EXPECT_FALSE(openDisc(folder.in(name)).disc) << name;
        EXPECT_NE(openDisc(folder.in(name)).reason, "") << name;
        EXPECT_TRUE(audioTracksOfImage(folder.in(name)).empty()) << name;
    }
    EXPECT_LT(clock.own(), std::chrono::seconds(2));
}

/// MEDIA-63
TEST_F(CdImage, AWaveFileThatLiesAboutItsLengthPlaysWhatItHolds) {
    for (const std::uint32_t told : {0xFFFFFFFFU, 0x7FFFFFFFU, 10'000'000U}) {
        folder.write("one.wav", wave(440, 2, 44100, 2, told));
        const auto disc = sound("FILE one.wav WAVE\n" + kWhole);
        ASSERT_TRUE(disc);
        EXPECT_EQ(disc->frames(), 2 * kCdSampleRate) << told;
        EXPECT_NEAR(test::toneOf(read(*disc, 2)), 440, 1);
    }
}

/// MEDIA-21
TEST_F(CdImage, AGiantOfHolesIsNoDisc) {
    std::ofstream(folder.in("disc.bin")).close();
    fs::resize_file(folder.in("disc.bin"), std::uintmax_t{20} << 30);
    EXPECT_NE(open("FILE disc.bin BINARY\n" + kWhole).reason, "");
}

/// MEDIA-47
TEST_F(CdImage, AFileThatGoesWhileItPlaysIsSilentAndEnds) {
    folder.write("one.bin", wave(440, 2).substr(44));
    folder.write("two.bin", wave(880, 30).substr(44));
    const auto disc = sound(
        "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE two.bin BINARY\nTRACK 02 AUDIO\n"
        "INDEX 01 00:00:00\n");
    ASSERT_TRUE(disc);
    EXPECT_NEAR(test::toneOf(read(*disc, 1)), 440, 1);
    fs::remove(folder.in("two.bin"));
    ASSERT_EQ(mkfifo(folder.in("two.bin").c_str(), 0600), 0);
    const double heard = static_cast<double>(read(*disc, 60).size()) / 2 / kCdSampleRate;
    EXPECT_GT(heard, 10);
    EXPECT_LT(heard, 13) << "ten seconds behind the first file, as a disc that was taken out";
}

/// Packets of silence (MPEG 1, layer 3, 128,000 bits a second) with a hole of gigabytes behind them: its length is
/// found by reading all of it.
void writeEndless(const std::string& path, int rate) {
    std::string packet(rate == 48000 ? "\xFF\xFB\x94\0" : "\xFF\xFB\x90\0", 4);
    packet.resize(static_cast<std::size_t>(144 * 128000 / rate), '\0');
    std::string bytes;
    for (int i = 0; i < 100; ++i) bytes += packet;
    std::ofstream(path, std::ios::binary) << bytes;
    fs::resize_file(path, std::uintmax_t{20} << 30U);
}

class EndlessSound : public CdImage, public testing::WithParamInterface<int> {};

TEST_P(EndlessSound, OfADiscIsGivenUpWhileItIsMeasured) {
    writeEndless(folder.in("endless.mp3"), GetParam());
    folder.write("disc.cue", "FILE endless.mp3 MP3\n" + kWhole);
    const auto flag = std::make_shared<std::atomic<bool>>(false);
    auto opening = std::async(std::launch::async, [&] { return openImage(folder.in("disc.cue"), flag); });
    ASSERT_EQ(opening.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout) << "it takes long";
    const test::Stopwatch clock;
    *flag = true;
    ASSERT_EQ(opening.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_LT(clock.own().count(), 500);
    EXPECT_FALSE(opening.get().disc);
}

INSTANTIATE_TEST_SUITE_P(Of, EndlessSound, testing::Values(44100, 48000));

}  // namespace
}  // namespace corvane
