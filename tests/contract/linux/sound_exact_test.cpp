// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "contract/linux/mci_rig.h"
#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"

namespace corvane {
namespace {

constexpr double kSeconds = 3.0;  ///< of every file
constexpr double kNoteSeconds = 0.25;
constexpr double kTolerance = 0.05;  ///< seconds

/// Everything from where the sound stands, first channel, in odd pieces.
std::vector<float> readAll(SoundBackend& sound, std::size_t most = SIZE_MAX) {
    const auto width = static_cast<std::size_t>(sound.format().channels);
    std::vector<float> samples, piece(777 * width);
    while (samples.size() < most) {
        const std::size_t wanted = std::min<std::size_t>(777, most - samples.size());
        const std::size_t got = sound.read(piece.data(), wanted);
        for (std::size_t i = 0; i < got; ++i) samples.push_back(piece[i * width]);
        if (got < wanted) break;
    }
    return samples;
}

/// How much of the frequency is in the samples (Goertzel).
double strength(const float* samples, std::size_t count, double frequency, int rate) {
    double real = 0, imaginary = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2 * M_PI * frequency * static_cast<double>(i) / rate;
        real += samples[i] * std::cos(angle);
        imaginary += samples[i] * std::sin(angle);
    }
    return std::hypot(real, imaginary);
}

/// Which of the notes is heard.
int noteIn(const std::vector<float>& samples, int rate) {
    int best = -1;
    double most = 0;
    for (int note = 0; note < 12; ++note) {
        const double found = strength(samples.data(), samples.size(), 330 * std::pow(2, note / 8.0), rate);
        if (found > most) {
            most = found;
            best = note;
        }
    }
    return best;
}

class SoundExactTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        OpenedSound opened = FileSound::open(test::soundData(GetParam()));
        ASSERT_TRUE(opened.sound) << opened.reason;
        sound = std::move(opened.sound);
        sound->measure();
        rate = sound->format().rate;
    }
    double seconds(std::int64_t frames) const { return static_cast<double>(frames) / rate; }

    std::unique_ptr<SoundBackend> sound;
    int rate = 0;
};

/// How long a file truly is. Longer than what it was made from are those that say nothing of what their coder added, so
/// that it is part of the sound: a last block of 2041 samples that is filled up and stated, and frames of 576 samples
/// with the coder's delay in front.
double trueSeconds(const std::string& file) {
    constexpr double kRate = 22050;
    if (file == "ima.wav") return 33 * 2041 / kRate;
    if (file == "cbr_bare.mp3" || file == "vbr_bare.mp3") return 117 * 576 / kRate;
    return kSeconds;
}

/// MEDIA-10: Every format has the length that is heard and seeks to the frame
/// KIND-09, OPEN-22
TEST_P(SoundExactTest, HasTheLengthThatIsHeard) {
    EXPECT_TRUE(sound->lengthKnown());
    EXPECT_NEAR(seconds(sound->frames()), trueSeconds(GetParam()), kTolerance);
    const auto heard = static_cast<std::int64_t>(readAll(*sound).size());
    EXPECT_NEAR(seconds(heard), trueSeconds(GetParam()), kTolerance);
    EXPECT_NEAR(seconds(sound->frames()), seconds(heard), 0.01) << "the slider's end is the sound's";
}

/// MEDIA-10
TEST_P(SoundExactTest, SeeksToTheFrame) {
    const std::vector<float> whole = readAll(*sound);
    const auto window = static_cast<std::size_t>(rate / 20);
    const auto slack = static_cast<std::ptrdiff_t>(rate * kTolerance);
    for (const double target : {2.7, 0.9, 1.6, 0.05, 2.2, 0.0, 1.1}) {
        const auto frame = static_cast<std::ptrdiff_t>(target * rate);
        sound->seek(frame);
        const std::vector<float> part = readAll(*sound, window);
        ASSERT_EQ(part.size(), window) << target;
        double best = 1e9;
        std::ptrdiff_t at = 0;
        for (std::ptrdiff_t shift = -slack; shift <= slack; ++shift) {
            const std::ptrdiff_t first = frame + shift;
            if (first < 0 || first + static_cast<std::ptrdiff_t>(window) > static_cast<std::ptrdiff_t>(whole.size()))
                continue;
            double difference = 0;
            for (std::size_t i = 0; i < window; ++i)
                difference += std::abs(part[i] - whole[static_cast<std::size_t>(first) + i]);
            if (difference < best) {
                best = difference;
                at = shift;
            }
        }
        EXPECT_EQ(at, 0) << "at " << target;
        EXPECT_LT(best / static_cast<double>(window), 0.04)  // some codecs make noise afresh
            << "at " << target;
    }
}

TEST_P(SoundExactTest, EachNoteIsAtItsTime) {
    for (const int note : {11, 3, 7, 0, 5}) {
        sound->seek(static_cast<std::int64_t>((note * kNoteSeconds + 0.08) * rate));
        EXPECT_EQ(noteIn(readAll(*sound, static_cast<std::size_t>(rate / 10)), rate), note);
    }
}

/// MEDIA-10
TEST_P(SoundExactTest, GoesOnToTheEndAfterASeek) {
    sound->seek(2 * rate);
    const auto left = static_cast<std::int64_t>(readAll(*sound).size());
    EXPECT_NEAR(seconds(left), seconds(sound->frames()) - 2, kTolerance);
}

INSTANTIATE_TEST_SUITE_P(Files, SoundExactTest,
                         testing::Values("pcm.wav", "float.wav", "ima.wav", "ms.wav", "cbr_bare.mp3", "vbr_bare.mp3",
                                         "vbr_headed.mp3", "tone.mp2", "tone.au", "tone.snd", "tone.aiff", "tone.aifc",
                                         "tone.ra", "version3.ra", "version4.ra", "tone.rm", "tone.flac", "tone.ogg",
                                         "tone.opus", "tone.m4a", "tone.aac"),
                         [](const auto& file) {
                             std::string name = file.param;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });

TEST(FileSoundTest, PlainSamplesAreThoseOfTheFileAlsoBackAtTheStart) {
    std::ifstream file(test::soundData("pcm.wav"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::size_t first = bytes.find("data") + 8;
    const OpenedSound opened = FileSound::open(test::soundData("pcm.wav"));
    ASSERT_TRUE(opened.sound) << opened.reason;
    for (int round = 0; round < 3; ++round) {
        const std::vector<float> heard = readAll(*opened.sound, 3000);
        ASSERT_EQ(heard.size(), 3000U);
        for (std::size_t i = 0; i < heard.size(); ++i) {
            const auto low = static_cast<std::uint8_t>(bytes[first + 2 * i]);
            const auto stored =
                static_cast<std::int16_t>(low | static_cast<std::uint8_t>(bytes[first + 2 * i + 1]) << 8);
            ASSERT_FLOAT_EQ(heard[i], static_cast<float>(stored) / 32768.0F) << i << " in round " << round;
        }
        opened.sound->seek(0);
    }
}

/// MEDIA-12: A sequence is sought without hanging notes
TEST(MidiSoundTest, SeeksToTheSameSoundWithoutHangingNotes) {
    OpenedSound opened = MidiSound::open(test::soundSample("chime.mid"), std::make_shared<Synthesizer>());
    ASSERT_TRUE(opened.sound) << opened.reason;
    SoundBackend& sound = *opened.sound;
    const int rate = sound.format().rate;
    EXPECT_EQ(sound.frames(), 4 * rate);
    const double notes[] = {523.25, 659.26, 783.99, 1046.50};
    for (const int note : {2, 0, 3, 1}) {
        sound.seek(note * rate / 2);
        const std::vector<float> heard = readAll(sound, static_cast<std::size_t>(rate / 4));
        std::vector<double> found;
        for (const double frequency : notes)
            found.push_back(strength(heard.data() + rate / 50, heard.size() - static_cast<std::size_t>(rate / 50),
                                     frequency, rate));
        EXPECT_EQ(std::max_element(found.begin(), found.end()) - found.begin(), note);
    }
    sound.seek(rate / 4);  // in the middle of a note, whose start is past
    const std::vector<float> rest = readAll(sound, static_cast<std::size_t>(rate / 8));
    EXPECT_LT(*std::max_element(rest.begin(), rest.end()), 0.02F);
    sound.seek(0);
    EXPECT_EQ(readAll(sound).size(), static_cast<std::size_t>(4 * rate));
}

/// MEDIA-08: A file that is no sound fails with a reason
TEST(FileSoundTest, WhatIsNoSoundFailsWithAReason) {
    for (const char* path :
         {"samples/NOTES.txt", "samples/hills.bmp", "samples", "samples/none.wav", "samples/silent.m1v"}) {
        const OpenedSound opened = FileSound::open(std::string(CORVANE_SOURCE_DIR) + "/" + path);
        EXPECT_FALSE(opened.sound) << path;
        EXPECT_NE(opened.reason, "") << path;
    }
}

}  // namespace
}  // namespace corvane
