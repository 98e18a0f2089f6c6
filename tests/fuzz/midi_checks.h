// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

#include "fuzz.h"
#include "media/midi/midi_file.h"

namespace corvane::fuzz {

/// What a synthesizer may rely on.
inline void checkSequence(const MidiFile& file, std::size_t bytes) {
    const MidiSequence& sequence = file.sequence;
    if (!file.reason.empty()) {
        require(sequence.events.empty() && sequence.microseconds == 0, "what failed is empty");
        return;
    }
    require(sequence.events.size() <= bytes && sequence.sysex.size() <= bytes, "no more events than bytes");
    require(std::isfinite(sequence.microseconds) && sequence.microseconds >= 0, "the length is a length");
    double before = 0;
    for (const MidiEvent& event : sequence.events) {
        require(event.microseconds >= before && event.microseconds <= sequence.microseconds, "events are in order");
        before = event.microseconds;
        require(event.status >= 0x80 && event.status <= 0xF0, "an event has a status");
        require(event.data1 < 0x80 && event.data2 < 0x80, "data have seven bits");
        require(event.status == 0xF0 ? event.sysex >= 0 && static_cast<std::size_t>(event.sysex) < sequence.sysex.size()
                                     : event.sysex == -1,
                "an exclusive message has its bytes");
    }
}

inline bool same(const MidiFile& a, const MidiFile& b) {
    if (a.reason != b.reason || a.sequence.microseconds != b.sequence.microseconds) return false;
    if (a.sequence.events.size() != b.sequence.events.size() || a.sequence.sysex != b.sequence.sysex) return false;
    for (std::size_t i = 0; i < a.sequence.events.size(); ++i) {
        const MidiEvent& x = a.sequence.events[i];
        const MidiEvent& y = b.sequence.events[i];
        if (x.microseconds != y.microseconds || x.status != y.status || x.data1 != y.data1 || x.data2 != y.data2)
            return false;
    }
    return true;
}

}  // namespace corvane::fuzz
