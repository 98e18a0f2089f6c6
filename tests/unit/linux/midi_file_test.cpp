// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/midi_file.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace corvane {
namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text += static_cast<char>(value);
    return text;
}

std::string bigEndian(std::size_t value, int length) {
    std::string text;
    for (int i = length - 1; i >= 0; --i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

std::string track(const std::string& events) { return "MTrk" + bigEndian(events.size(), 4) + events; }

std::string header(int format, int tracks, int division) {
    return "MThd" + bigEndian(6, 4) + bigEndian(static_cast<std::size_t>(format), 2) +
           bigEndian(static_cast<std::size_t>(tracks), 2) + bigEndian(static_cast<std::size_t>(division), 2);
}

/// Four microseconds per quarter values used below, as meta events without their delta time.
std::string tempo(int microseconds) {
    return bytes({0xFF, 0x51, 3}) + bigEndian(static_cast<std::size_t>(microseconds), 3);
}

const std::string kEnd = bytes({0x00, 0xFF, 0x2F, 0x00});

double milliseconds(const MidiFile& file) { return file.sequence.microseconds / 1000; }
double milliseconds(const MidiEvent& event) { return event.microseconds / 1000; }

/// MEDIA-40: A sequence without a tempo has 120 quarters a minute; SMPTE time needs none, 29 frames meaning 30000/1001;
///     the length reaches to the end of the longest track, and long ones lose no millisecond
TEST(MidiFileTest, WithoutATempoAQuarterIsHalfASecond) {
    const MidiFile file =
        readMidi(header(0, 1, 96) + track(bytes({0, 0x90, 60, 100, 96, 0x80, 60, 0, 96, 0x90, 62, 1}) + kEnd));
    ASSERT_EQ(file.reason, "");
    ASSERT_EQ(file.sequence.events.size(), 3U);
    EXPECT_DOUBLE_EQ(milliseconds(file.sequence.events[0]), 0);
    EXPECT_DOUBLE_EQ(milliseconds(file.sequence.events[1]), 500);
    EXPECT_DOUBLE_EQ(milliseconds(file.sequence.events[2]), 1000);
    EXPECT_DOUBLE_EQ(milliseconds(file), 1000);
    EXPECT_EQ(file.sequence.events[1].status, 0x80);
    EXPECT_EQ(file.sequence.events[2].data1, 62);
    EXPECT_EQ(file.sequence.events[2].data2, 1);
}

// 96 ticks at 500 ms, 48 at 1 s and 192 at 250 ms a quarter: 500 + 500 + 500.
/// MEDIA-11: A sequence's tempo, tracks and formats are read exactly
TEST(MidiFileTest, FollowsChangesOfTempo) {
    const std::string events = bytes({0}) + tempo(500'000) + bytes({96}) + tempo(1'000'000) + bytes({48}) +
                               tempo(250'000) + bytes({0x81, 0x40, 0x90, 60, 100}) + kEnd;
    const MidiFile file = readMidi(header(0, 1, 96) + track(events));
    ASSERT_EQ(file.sequence.events.size(), 1U);
    EXPECT_DOUBLE_EQ(milliseconds(file.sequence.events[0]), 1500);
}

// The map of tempo in the first track rules the second: 100 ticks of 200 a quarter at 600 ms, then 300 at 400 ms.
/// MEDIA-11
TEST(MidiFileTest, TheTempoOfOneTrackRulesAllOfThem) {
    const std::string map = bytes({0}) + tempo(600'000) + bytes({100}) + tempo(400'000) + kEnd;
    const std::string notes = bytes({0x83, 0x10, 0x91, 64, 80}) + kEnd;  // tick 400
    const MidiFile file = readMidi(header(1, 2, 200) + track(map) + track(notes));
    ASSERT_EQ(file.sequence.events.size(), 1U);
    EXPECT_DOUBLE_EQ(milliseconds(file.sequence.events[0]), 300 + 600);
    EXPECT_DOUBLE_EQ(milliseconds(file), 900);
}

// Three quarters of a microsecond each; a tempo of no time at all leaves what was.
/// MEDIA-11
TEST(MidiFileTest, TheFastestTempoCountsAndNoneDoesNot) {
    const std::string fast = bytes({0}) + tempo(1) + bytes({0x82, 0x20, 0x90, 60, 1}) + kEnd;
    EXPECT_DOUBLE_EQ(readMidi(header(0, 1, 96) + track(fast)).sequence.microseconds, 3);
    const std::string none = bytes({0}) + tempo(0) + bytes({96, 0x90, 60, 1}) + kEnd;
    EXPECT_DOUBLE_EQ(milliseconds(readMidi(header(0, 1, 96) + track(none))), 500);
}

/// MEDIA-41
TEST(MidiFileTest, MergesTracksInOrderOfTimeThenOfTrack) {
    const std::string one = bytes({10, 0x90, 1, 1, 10, 0x90, 2, 1}) + kEnd;
    const std::string two = bytes({0, 0x91, 3, 1, 10, 0x91, 4, 1}) + kEnd;
    const MidiFile file = readMidi(header(1, 2, 100) + track(one) + track(two));
    std::string order;
    for (const MidiEvent& event : file.sequence.events) order += static_cast<char>('0' + event.data1);
    EXPECT_EQ(order, "3142");
}

/// MEDIA-40
TEST(MidiFileTest, TheLengthReachesToTheEndOfTheLongestTrack) {
    const std::string brief = bytes({0, 0x90, 60, 1}) + kEnd;
    const std::string rest = bytes({0x87, 0x40, 0xFF, 0x2F, 0});  // 960 ticks of 480 a quarter: a second
    EXPECT_DOUBLE_EQ(milliseconds(readMidi(header(1, 2, 480) + track(brief) + track(rest))), 1000);
}

/// MEDIA-41: Running status, exclusive messages and unknown chunks are read as the format wants, tracks merged in order
///     of time
TEST(MidiFileTest, ReadsRunningStatusAlsoAfterOtherEvents) {
    const std::string events =
        bytes({0, 0xC3, 5, 1, 6, 1, 0xFF, 0x01, 2, 'h', 'i', 1, 7, 1, 0xE3, 0, 0x40, 1, 1, 0x41}) + kEnd;
    const MidiFile file = readMidi(header(0, 1, 96) + track(events));
    ASSERT_EQ(file.sequence.events.size(), 5U);
    EXPECT_EQ(file.sequence.events[2].status, 0xC3);
    EXPECT_EQ(file.sequence.events[2].data1, 7);
    EXPECT_EQ(file.sequence.events[4].status, 0xE3);
    EXPECT_EQ(file.sequence.events[4].data2, 0x41);
}

// 25 frames of 40 ticks a second: a tick is a millisecond, and a tempo changes nothing.
/// MEDIA-40
TEST(MidiFileTest, CountsSmpteTimeWithoutTempo) {
    const std::string events = bytes({0}) + tempo(100'000) + bytes({0x87, 0x68, 0x90, 60, 1}) + kEnd;
    EXPECT_DOUBLE_EQ(milliseconds(readMidi(header(0, 1, 0xE728) + track(events))), 1000);
}

// 30 drop frames are 30000/1001 a second: 2997 ticks of 100 a frame take one second less 0.003 %.
/// MEDIA-40
TEST(MidiFileTest, SmpteTimeWith29FramesIsDropFrameTime) {
    const std::string events = bytes({0x97, 0x35, 0x90, 60, 1}) + kEnd;
    EXPECT_NEAR(milliseconds(readMidi(header(0, 1, 0xE364) + track(events))), 2997 * 1001.0 / 3000.0, 1e-6);
}

/// MEDIA-41
TEST(MidiFileTest, KeepsExclusiveMessagesWithoutTheirFrame) {
    const std::string events = bytes({0, 0xF0, 5, 0x7E, 0x7F, 0x09, 0x01, 0xF7, 10, 0xF7, 2, 1, 2}) + kEnd;
    const MidiFile file = readMidi(header(0, 1, 96) + track(events));
    ASSERT_EQ(file.sequence.events.size(), 1U);
    EXPECT_EQ(file.sequence.events[0].status, 0xF0);
    EXPECT_EQ(file.sequence.sysex.at(0), bytes({0x7E, 0x7F, 0x09, 0x01}));
}

/// MEDIA-11
TEST(MidiFileTest, UnwrapsRiff) {
    const std::string inner = header(0, 1, 96) + track(bytes({96, 0x90, 60, 1}) + kEnd);
    const auto little = [](std::size_t value) {
        std::string text = bigEndian(value, 4);
        return std::string(text.rbegin(), text.rend());
    };
    const std::string notes(0x010203, 'n');  // no two bytes of the length are the same
    const std::string chunks =
        "RMIDLIST" + little(notes.size()) + notes + std::string(1, '\0') + "data" + little(inner.size()) + inner;
    const std::string riff = "RIFF" + little(chunks.size()) + chunks;
    EXPECT_TRUE(looksLikeMidi(riff));
    EXPECT_DOUBLE_EQ(milliseconds(readMidi(riff)), 500);
}

/// MEDIA-11
TEST(MidiFileTest, TracksOfFormat2FollowEachOther) {
    const std::string one = bytes({96, 0x90, 60, 1}) + kEnd;
    EXPECT_DOUBLE_EQ(milliseconds(readMidi(header(2, 2, 96) + track(one) + track(one))), 1000);
}

/// MEDIA-41
TEST(MidiFileTest, SkipsChunksItDoesNotKnow) {
    const std::string odd = "XFIH" + bigEndian(3, 4) + "abc";
    const MidiFile file = readMidi(header(1, 1, 96) + odd + track(bytes({96, 0x90, 60, 1}) + kEnd));
    EXPECT_DOUBLE_EQ(milliseconds(file), 500);
}

/// MEDIA-42: A damaged track counts as far as it can be read and does not spoil the others; what is no sequence fails
///     with a reason
TEST(MidiFileTest, ATrackCutShortCountsAsFarAsItGoes) {
    const std::string whole = header(0, 1, 96) + track(bytes({96, 0x90, 60, 1, 96, 0x80, 60, 0}) + kEnd);
    for (std::size_t length = whole.size(); length > 22; --length) {
        const MidiFile file = readMidi(std::string_view(whole).substr(0, length));
        ASSERT_EQ(file.reason, "") << length;
        const double expected = length >= 30 ? 1000 : length >= 26 ? 500 : 0;
        EXPECT_DOUBLE_EQ(milliseconds(file), expected) << length;
    }
}

/// MEDIA-42
TEST(MidiFileTest, ATrackOfRubbishDoesNotSpoilTheOthers) {
    const std::string rubbish = bytes({0, 0x90, 60, 1, 5, 0x90, 0xC0, 0xC0, 9, 9, 9, 9});
    const MidiFile file = readMidi(header(1, 2, 96) + track(rubbish) + track(bytes({96, 0x90, 61, 1}) + kEnd));
    ASSERT_EQ(file.sequence.events.size(), 2U);
    EXPECT_EQ(file.sequence.events[1].data1, 61);
    EXPECT_DOUBLE_EQ(milliseconds(file), 500);
}

/// MEDIA-42
TEST(MidiFileTest, WhatIsNoMidiFailsWithAReason) {
    const std::string riff = "RIFF" + std::string(4, '\0');
    for (const std::string& text :
         {std::string(), std::string("M"), std::string("This is a text.\n"), riff, riff + "WAVE", riff + "RMID",
          riff + "RMIDdata" + std::string(4, '\0'), std::string("MThd"), header(0, 1, 0) + track(kEnd),
          header(0, 1, 96), header(0, 1, 0x8000) + track(kEnd), header(0, 1, 96) + "MTr"}) {
        EXPECT_NE(readMidi(text).reason, "") << text;
    }
}

/// MEDIA-40
TEST(MidiFileTest, LongTicksDoNotLoseMilliseconds) {
    std::string events = bytes({0}) + tempo(333'333);
    for (int i = 0; i < 1000; ++i) events += bytes({7}) + tempo(333'333);
    events += bytes({0, 0x90, 60, 1}) + kEnd;
    EXPECT_NEAR(milliseconds(readMidi(header(0, 1, 480) + track(events))), 7000 * 333.333 / 480, 1e-3);
}

/// FAULT-61: A MIDI file with too many events or bytes is refused, an endless one held, a seek given up
TEST(MidiFileTest, TooManyEventsAreRefusedInOneTrackAndInAll) {
    const auto events = [](std::size_t count) {
        std::string text = bytes({0, 0xC0, 0});
        for (std::size_t i = 1; i < count; ++i) text += std::string(2, '\0');  // at once, by running status
        return text + kEnd;
    };
    EXPECT_EQ(readMidi(header(0, 1, 96) + track(events(kMostMidiEvents))).sequence.events.size(), kMostMidiEvents);
    EXPECT_EQ(readMidi(header(0, 1, 96) + track(events(kMostMidiEvents + 1))).reason,
              "The MIDI file holds too many events.");
    const std::string half = track(events(kMostMidiEvents / 2));
    EXPECT_EQ(readMidi(header(1, 2, 96) + half + half).reason, "");
    EXPECT_EQ(readMidi(header(1, 3, 96) + half + half + track(events(1))).reason,
              "The MIDI file holds too many events.");
}

/// FAULT-61
TEST(MidiFileTest, AnEndlessSequenceIsHeldAtTheLongestTime) {
    std::string events = bytes({0}) + tempo(0xFFFFFF);
    for (int i = 0; i < 100; ++i) events += bytes({0xFF, 0xFF, 0xFF, 0x7F, 0xC0, 0});
    const MidiFile file = readMidi(header(0, 1, 1) + track(events + kEnd));
    EXPECT_EQ(file.sequence.microseconds, kLongestMidi);
    for (const MidiEvent& event : file.sequence.events) EXPECT_LE(event.microseconds, kLongestMidi);
}

}  // namespace
}  // namespace corvane
