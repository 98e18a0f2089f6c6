// SPDX-License-Identifier: GPL-3.0-or-later
#include "midi_checks.h"

/// A MIDI file. What is behind its last byte adds events, but never takes one away.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const MidiFile file = readMidi(bytes);
    fuzz::checkSequence(file, size);
    fuzz::require(fuzz::same(file, readMidi(bytes)), "the same bytes give the same");
    if (!file.reason.empty()) return 0;
    const MidiFile shorter = readMidi(bytes.substr(0, size - 1));
    fuzz::require(shorter.sequence.events.size() <= file.sequence.events.size(), "fewer bytes give no more events");
    return 0;
}
