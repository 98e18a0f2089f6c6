// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "media/midi/midi_sound.h"
#include "unit/linux/midi_score.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

using test::Score;

constexpr std::size_t kRate = 44100;
static_assert(kRate == Synthesizer::kFormat.rate);

struct Heard {
    double left = 0, right = 0;  ///< loudness
    double pitch = 0;            ///< Hz, by the crossings of zero
};

/// The synthesizer's state after a seek is as if everything up to there had been played, without its notes.
struct MidiSeek : ::testing::Test {
    test::TemporaryFolder folder;
    std::shared_ptr<Synthesizer> synthesizer = std::make_shared<Synthesizer>();

    std::unique_ptr<SoundBackend> open(const Score& score) {
        folder.write("a.mid", score.file());
        OpenedSound opened = MidiSound::open(folder.in("a.mid"), synthesizer);
        EXPECT_TRUE(opened.sound) << opened.reason;
        return std::move(opened.sound);
    }
    /// What is heard at that time, after a seek there or having played from the start.
    Heard at(const Score& score, std::size_t milliseconds, bool seeking) {
        const std::unique_ptr<SoundBackend> sound = open(score);
        const std::size_t frame = milliseconds * kRate / 1000;
        std::vector<float> samples(2 * (frame + kRate / 2));
        if (seeking) {
            sound->read(samples.data(), 4096);  // it has begun to play
            sound->seek(static_cast<std::int64_t>(frame));
        } else {
            sound->read(samples.data(), frame);
        }
        const std::size_t count = sound->read(samples.data(), kRate / 2);
        return measure(samples, count);
    }
    static Heard measure(const std::vector<float>& samples, std::size_t count) {
        Heard heard;
        int crossings = 0;
        for (std::size_t i = 0; i < count; ++i) {
            heard.left += std::abs(static_cast<double>(samples[2 * i]));
            heard.right += std::abs(static_cast<double>(samples[2 * i + 1]));
            if (i > count / 5 && samples[2 * i - 2] < 0 && samples[2 * i] >= 0) ++crossings;
        }
        heard.left /= static_cast<double>(count);
        heard.right /= static_cast<double>(count);
        heard.pitch = crossings / (0.8 * static_cast<double>(count) / static_cast<double>(kRate));
        return heard;
    }
};

constexpr int kOcarina = 79;  // nearly a sine: its crossings of zero tell its pitch

/// MEDIA-39: Reached by a seek, a sequence is as if it had been played up to there: programs, controllers and bends
///     hold, notes that hang are silent; back before a bend and in another sequence nothing of it is left
TEST_F(MidiSeek, ProgramsHoldAndThePitchIsBent) {
    Score score;
    score.after(0, {0xC0, kOcarina}).after(0, {0xB0, 101, 0}).after(0, {0xB0, 100, 0}).after(0, {0xB0, 6, 12});
    score.after(100, {0xE0, 0x7F, 0x7F}).after(1900, {0x90, 69, 110}).after(1000, {0x80, 69, 0});
    for (const bool seeking : {false, true}) {
        const Heard heard = at(score, 2000, seeking);
        EXPECT_GT(heard.left, 0.01) << seeking;
        EXPECT_NEAR(heard.pitch, 880, 15) << "bent up by the octave that its range was set to; seeking: " << seeking;
    }
}

/// MEDIA-39
TEST_F(MidiSeek, BackBeforeABendNothingOfItIsLeft) {
    Score score;
    score.after(0, {0xC0, kOcarina})
        .after(0, {0x90, 69, 110})
        .after(1000, {0x80, 69, 0})
        .after(500, {0xE0, 0x7F, 0x7F});
    score.after(500, {0x90, 69, 110}).after(1000, {0x80, 69, 0});
    const std::unique_ptr<SoundBackend> sound = open(score);
    std::vector<float> samples(kRate);
    sound->seek(std::int64_t{2} * kRate);
    EXPECT_NEAR(measure(samples, sound->read(samples.data(), kRate / 2)).pitch, 493.9, 10) << "two semitones up";
    sound->seek(0);
    EXPECT_NEAR(measure(samples, sound->read(samples.data(), kRate / 2)).pitch, 440, 10);
}

/// MEDIA-39
TEST_F(MidiSeek, ControllersHold) {
    Score score;
    score.after(0, {0xC0, kOcarina}).after(0, {0xB0, 10, 127}).after(0, {0xB0, 91, 0}).after(0, {0xB0, 93, 0});
    score.after(1000, {0xB0, 7, 30}).after(1000, {0x90, 69, 110}).after(1000, {0x80, 69, 0});
    Score loud;
    loud.after(0, {0xC0, kOcarina}).after(2000, {0x90, 69, 110}).after(1000, {0x80, 69, 0});
    const Heard plain = at(loud, 2000, true);
    for (const bool seeking : {false, true}) {
        const Heard heard = at(score, 2000, seeking);
        EXPECT_GT(heard.right, 10 * heard.left) << "far right; seeking: " << seeking;
        EXPECT_LT(heard.right, plain.right / 4) << "softer; seeking: " << seeking;
        EXPECT_GT(heard.right, 0.0005) << seeking;
    }
}

/// MEDIA-39
TEST_F(MidiSeek, HangingNotesAreSilenced) {
    Score score;
    score.after(0, {0xC0, kOcarina}).after(0, {0x90, 69, 110}).after(15000, {0xB0, 1, 0});
    EXPECT_GT(at(score, 5000, false).left, 0.01) << "it goes on sounding";
    EXPECT_LT(at(score, 5000, true).left, 0.001);
}

/// MEDIA-39
TEST_F(MidiSeek, AnotherSequenceLeavesNothingBehind) {
    Score bent;
    bent.after(0, {0xC0, kOcarina}).after(0, {0xE0, 0x7F, 0x7F}).after(0, {0xB0, 7, 1}).after(0, {0x90, 60, 110});
    bent.after(3000, {0xB0, 1, 0});
    at(bent, 500, false);
    Score plain;
    plain.after(0, {0xC0, kOcarina}).after(0, {0x90, 69, 110}).after(2000, {0x80, 69, 0});
    const Heard heard = at(plain, 0, false);
    EXPECT_NEAR(heard.pitch, 440, 10);
    EXPECT_GT(heard.left, 0.01);
}

/// FAULT-61
TEST_F(MidiSeek, ASeekAndAReadAreGivenUpAndGoOnAfterwards) {
    Score score;
    for (int i = 0; i < 1000; ++i) score.after(0, {0xB0, 7, i % 128});
    const std::unique_ptr<SoundBackend> sound = open(score.after(500, {0xC0, 19}).after(500, {0x90, 60, 100}));
    std::vector<float> samples(2 * kRate, 1.0F);
    sound->stopping = true;
    EXPECT_EQ(sound->read(samples.data(), 100), 0U);
    sound->seek(kRate);
    EXPECT_EQ(sound->read(samples.data(), 100), 0U) << "it is not where it should be";
    sound->stopping = false;
    EXPECT_EQ(sound->read(samples.data(), kRate / 2), kRate / 2) << "and goes there now";
    EXPECT_GT(measure(samples, kRate / 2).left, 0.001);
    sound->abandoned = true;
    sound->seek(0);
    EXPECT_EQ(sound->read(samples.data(), 100), 0U);
}

/// FAULT-61
TEST_F(MidiSeek, ALargeFileIsRefused) {
    folder.write("a.mid", "MThd" + std::string((16U << 20U) + 1, '\0'));
    EXPECT_EQ(MidiSound::open(folder.in("a.mid"), synthesizer).reason, "The MIDI file is too large.");
}

}  // namespace
}  // namespace corvane
