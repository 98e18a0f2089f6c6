// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "media/midi/midi_sound.h"
#include "unit/linux/midi_score.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

using test::midiBytes;
using test::midiFile;

constexpr double kRate = Synthesizer::kFormat.rate;
constexpr double kToleranceMs = 5;

// The notes' parts of a track, after their time: a hard hit, and its end at once and for all.
const std::string kLoud = midiBytes({0x99, 37, 127});
const std::string kCut = midiBytes({0xB9, 120, 0});
/// Hardly an echo on that channel.
const std::string kDry = midiBytes({0, 0xB9, 91, 0, 0, 0xB9, 93, 0});
/// Microseconds a quarter, after its time.
std::string tempo(std::size_t microseconds) { return midiBytes({0xFF, 0x51, 3}) + test::bigNumber(microseconds, 3); }

/// Where the notes of a file begin to be heard, milliseconds.
struct MidiOnset : ::testing::Test {
    test::TemporaryFolder folder;
    std::shared_ptr<Synthesizer> synthesizer = std::make_shared<Synthesizer>();

    std::unique_ptr<SoundBackend> open(const std::string& file) {
        folder.write("a.mid", file);
        OpenedSound opened = MidiSound::open(folder.in("a.mid"), synthesizer);
        EXPECT_TRUE(opened.sound) << opened.reason;
        return std::move(opened.sound);
    }
    /// The first sample that is loud, then each after a silence of 200 ms.
    static std::vector<double> onsets(SoundBackend& sound, double startMs = 0) {
        constexpr float kHeard = 0.003F;
        std::vector<float> piece(2 * 1000);
        std::vector<double> found;
        std::int64_t frame = 0, lastLoud = -static_cast<std::int64_t>(kRate);
        for (std::size_t got = 1000; got == 1000;) {
            got = sound.read(piece.data(), 1000);
            for (std::size_t i = 0; i < got; ++i, ++frame) {
                if (std::abs(piece[2 * i]) < kHeard) continue;
                if (static_cast<double>(frame - lastLoud) > 0.2 * kRate)
                    found.push_back(startMs + static_cast<double>(frame) * 1000 / kRate);
                lastLoud = frame;
            }
        }
        return found;
    }
    static void expectOnsets(const std::vector<double>& found, const std::vector<double>& wanted) {
        ASSERT_EQ(found.size(), wanted.size()) << ::testing::PrintToString(found);
        for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_NEAR(found[i], wanted[i], kToleranceMs) << i;
    }
};

// 96 ticks a quarter. At 500 ms a quarter tick 48 is at 250 ms; from tick 96 (500 ms) on at 750 ms a quarter tick 144
// is at 875 ms; from tick 192 (1250 ms) on at 300 ms a quarter tick 384 is at 1850 ms.
std::string ofTempos() {
    return midiFile(96, {kDry + midiBytes({0}) + tempo(500'000) + midiBytes({48}) + kLoud + midiBytes({10}) + kCut +
                         midiBytes({38}) + tempo(750'000) + midiBytes({48}) + kLoud + midiBytes({10}) + kCut +
                         midiBytes({38}) + tempo(300'000) + midiBytes({0x81, 0x40}) + kLoud + midiBytes({96}) + kCut});
}

/// MEDIA-38: The notes of a sequence are heard at their times to 5 ms, through changes of tempo, in SMPTE time and
///     after a seek, and its position is kept to 5 ms
TEST_F(MidiOnset, EachNoteIsHeardAtItsTimeThroughChangesOfTempo) {
    const auto sound = open(ofTempos());
    EXPECT_NEAR(static_cast<double>(sound->frames()) * 1000 / kRate, 1850 + 300, 1);
    expectOnsets(onsets(*sound), {250, 875, 1850});
}

/// MEDIA-38
TEST_F(MidiOnset, TheTempoOfTheFirstTrackMovesTheNotesOfAnother) {
    // 480 ticks a quarter: 240 ticks of 1 s a quarter, then 400 ms a quarter: tick 720 is at 500 + 400 ms.
    const std::string map = midiBytes({0}) + tempo(1'000'000) + midiBytes({0x81, 0x70}) + tempo(400'000);
    const std::string notes = kDry + midiBytes({0x85, 0x50}) + kLoud + midiBytes({0x83, 0x60}) + kCut;
    expectOnsets(onsets(*open(midiFile(480, {map, notes}))), {900});
}

/// MEDIA-38
TEST_F(MidiOnset, EachNoteIsHeardAtItsSmpteTime) {
    const auto notes = [](int first, int second) {  // ticks of two bytes
        return kDry + midiBytes({0x80 | first >> 7, first & 0x7F}) + kLoud + midiBytes({20}) + kCut +
               midiBytes({0x80 | second >> 7, second & 0x7F}) + kLoud + midiBytes({100}) + kCut;
    };
    // Frames of a second, ticks of a frame: 25 x 40, 24 x 8, 30 x 10, and the 30 of which some are left out: 30000/1001
    // x 4.
    expectOnsets(onsets(*open(midiFile(0xE728, {notes(700, 480)}))), {700, 1200});
    expectOnsets(onsets(*open(midiFile(0xE808, {notes(96, 172)}))), {500, 1500});
    expectOnsets(onsets(*open(midiFile(0xE20A, {notes(150, 280)}))), {500, 1500});
    expectOnsets(onsets(*open(midiFile(0xE304, {notes(600, 580)}))), {600 * 1001 / 120.0, 1200 * 1001 / 120.0});
}

/// MEDIA-38
TEST_F(MidiOnset, AfterASeekEachNoteIsHeardAtItsTime) {
    const auto sound = open(ofTempos());
    for (const double from : {1249.0, 100.0, 874.0, 0.0, 1500.0}) {
        sound->seek(std::llround(from * kRate / 1000));
        std::vector<double> wanted{250, 875, 1850};
        std::erase_if(wanted, [from](double time) { return time < from; });
        expectOnsets(onsets(*sound, from), wanted);
    }
}

}  // namespace
}  // namespace corvane
