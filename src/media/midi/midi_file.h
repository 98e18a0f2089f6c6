// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What is more than any music: a file with more events is refused, and what lies behind the longest time comes then.
constexpr std::size_t kMostMidiEvents = 1'000'000;
constexpr double kLongestMidi = 2e12;  ///< microseconds

/// One event of a sequence that a synthesizer understands; tempo and text are already worked in or left out.
struct MidiEvent {
    double microseconds = 0;  ///< from the start
    std::uint8_t status = 0;  ///< with the channel; 0xF0: system exclusive
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;
    std::int32_t sysex = -1;  ///< 0xF0: index into MidiSequence::sysex
};

/// A whole sequence with its time worked out.
struct MidiSequence {
    std::vector<MidiEvent> events;   ///< in order of time; at one time in order of track and of the file
    std::vector<std::string> sysex;  ///< without the leading 0xF0 and the closing 0xF7
    double microseconds = 0;         ///< length: where the last event is, ends of tracks included
};

/// What reading gives; `reason` is empty when it succeeded.
struct MidiFile {
    MidiSequence sequence;
    std::string reason;
};

/// True: the bytes begin like a standard MIDI file, bare or wrapped in RIFF.
bool looksLikeMidi(std::string_view bytes);

/// Reads a standard MIDI file: formats 0, 1 and 2 (whose tracks follow each other), time in ticks with tempo changes or
/// in SMPTE frames, running status, also wrapped in RIFF. A damaged track counts as far as it can be read; a file
/// without any track fails, and one with too many events.
MidiFile readMidi(std::string_view bytes);

}  // namespace corvane
