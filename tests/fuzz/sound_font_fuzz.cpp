// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the sounds for MIDI, as the synthesizer's library reads it through our own reader; what it was taken for
// is played.
#include <array>
#include <cmath>
#include <cstdlib>

#include "media/midi/synthesizer.h"
#include "memory_file.h"

namespace {

using corvane::MidiEvent;
using corvane::fuzz::require;

constexpr std::size_t kPiece = 512;
constexpr int kNote = 0x90, kProgram = 0xC0, kControl = 0xB0;

void playOn(corvane::Synthesizer& synthesizer) {
    std::array<float, 2 * kPiece + 1> samples{};
    samples.back() = 7.0F;
    for (int i = 0; i < 4; ++i) {
        synthesizer.render(samples.data(), kPiece);
        require(samples.back() == 7.0F, "nothing is written behind what was asked for");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const corvane::fuzz::MemoryFile file(data, size);
    setenv("CORVANE_SOUNDFONT", file.path().c_str(), 1);
    corvane::Synthesizer synthesizer;
    const std::string reason = synthesizer.load();
    require(synthesizer.isLoaded() == reason.empty(), "it is loaded, or told why not");
    if (!synthesizer.isLoaded()) return 0;
    const corvane::MidiSequence none;
    const auto tell = [&](int status, int data1, int data2) {
        const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
        synthesizer.play(MidiEvent{0, byte(status), byte(data1), byte(data2), -1}, none, false);
    };
    for (const int program : {0, 1, 40, 127}) {
        for (const int channel : {0, 9}) {
            tell(kControl | channel, 0, program % 2);
            tell(kProgram | channel, program, 0);
            for (const int key : {0, 36, 60, 100, 127}) tell(kNote | channel, key, 100);
        }
        playOn(synthesizer);
    }
    synthesizer.reset();
    playOn(synthesizer);
    return 0;
}
