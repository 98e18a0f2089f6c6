// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/synthesizer.h"

#include <array>
#include <utility>

#include "drives/spare_descriptors.h"
#include "media/midi/fluid_library.h"
#include "types/text.h"

namespace corvane {

namespace {

// Loud enough beside sound files, with room for many voices before it clips.
constexpr double kGain = 0.45;
constexpr int kVoices = 128;
constexpr int kDyingFrames = 8192;

}  // namespace

Synthesizer::~Synthesizer() {
    if (!synth_) return;
    fluid().delete_fluid_synth(synth_);
    fluid().delete_fluid_settings(settings_);
}

std::string Synthesizer::load() {
    const std::lock_guard lock(mutex_);
    if (synth_) return "";
    if (!loadFluid()) return SpareDescriptors::reason("The synthesizer for MIDI is not installed.");
    std::string reason;
    std::unique_ptr<SoundFont> font = SoundFont::find(reason);
    if (!font) return reason;
    for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG})
        fluid().fluid_set_log_function(level, nullptr, nullptr);
    settings_ = fluid().new_fluid_settings();
    fluid().fluid_settings_setnum(settings_, "synth.sample-rate", kFormat.rate);
    fluid().fluid_settings_setnum(settings_, "synth.gain", kGain);
    fluid().fluid_settings_setint(settings_, "synth.polyphony", kVoices);
    // All instruments are held in memory: one that cannot be read later, in the middle of a play, ends the program.
    fluid().fluid_settings_setint(settings_, "synth.dynamic-sample-loading", 0);
    fluid().fluid_settings_setint(settings_, "synth.threadsafe-api", 0);
    synth_ = fluid().new_fluid_synth(settings_);
    if (synth_ && font->load(settings_, synth_)) {
        font_ = std::move(font);
        loaded_ = true;
        return "";
    }
    fluid().delete_fluid_synth(synth_);
    fluid().delete_fluid_settings(settings_);
    synth_ = nullptr;
    settings_ = nullptr;
    return "The sounds for MIDI cannot be read: " + text::onOneLine(font->path());
}

bool Synthesizer::claim(const void* user) {
    const std::lock_guard lock(mutex_);
    if (user_ == user) return true;
    user_ = user;
    return false;
}

void Synthesizer::release(const void* user) {
    const std::lock_guard lock(mutex_);
    if (user_ == user) user_ = nullptr;
}

void Synthesizer::reset() {
    const std::lock_guard lock(mutex_);
    fluid().fluid_synth_system_reset(synth_);
    // Voices that were switched off die away over some hundredths of a second: unheard.
    std::array<float, 512> unheard{};
    for (int frames = 0; frames < kDyingFrames; frames += static_cast<int>(unheard.size() / 2))
        fluid().fluid_synth_write_float(synth_, static_cast<int>(unheard.size() / 2), unheard.data(), 0, 2,
                                        unheard.data(), 1, 2);
}

void Synthesizer::play(const MidiEvent& event, const MidiSequence& sequence, bool stateOnly) {
    const std::lock_guard lock(mutex_);
    const int channel = event.status & 0x0F;
    switch (event.status & 0xF0) {
        case 0x80:
            if (!stateOnly) fluid().fluid_synth_noteoff(synth_, channel, event.data1);
            break;
        case 0x90:
            if (!stateOnly) fluid().fluid_synth_noteon(synth_, channel, event.data1, event.data2);
            break;
        case 0xA0:
            fluid().fluid_synth_key_pressure(synth_, channel, event.data1, event.data2);
            break;
        case 0xB0:
            fluid().fluid_synth_cc(synth_, channel, event.data1, event.data2);
            break;
        case 0xC0:
            fluid().fluid_synth_program_change(synth_, channel, event.data1);
            break;
        case 0xD0:
            fluid().fluid_synth_channel_pressure(synth_, channel, event.data1);
            break;
        case 0xE0:
            fluid().fluid_synth_pitch_bend(synth_, channel, event.data2 << 7 | event.data1);
            break;
        default:
            if (event.sysex >= 0) {
                const std::string& data = sequence.sysex[static_cast<std::size_t>(event.sysex)];
                fluid().fluid_synth_sysex(synth_, data.data(), static_cast<int>(data.size()), nullptr, nullptr, nullptr,
                                          0);
            }
    }
}

void Synthesizer::render(float* samples, std::size_t frames) {
    const std::lock_guard lock(mutex_);
    fluid().fluid_synth_write_float(synth_, static_cast<int>(frames), samples, 0, 2, samples, 1, 2);
}

}  // namespace corvane
