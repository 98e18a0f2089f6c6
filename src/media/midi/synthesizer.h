// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

#include "media/midi/midi_file.h"
#include "media/midi/sound_font.h"
#include "media/sound/sound_backend.h"

// The library's own names.
struct _fluid_hashtable_t;  // NOLINT(bugprone-reserved-identifier)
struct _fluid_synth_t;      // NOLINT(bugprone-reserved-identifier)

namespace corvane {

/// One synthesizer with its sounds, made when the first sequence is opened and kept. Any thread.
class Synthesizer {
public:
    Synthesizer() = default;
    ~Synthesizer();
    Synthesizer(const Synthesizer&) = delete;
    Synthesizer& operator=(const Synthesizer&) = delete;

    static constexpr PcmFormat kFormat{44100, 2};

    /// Loads the sounds when they are not there yet: the file that CORVANE_SOUNDFONT names, or the first found in the
    /// usual places. Empty, or the reason why it failed, in words.
    std::string load();
    bool isLoaded() const { return loaded_; }
    /// True when `user` played last; otherwise it does from now on, and has to reset.
    bool claim(const void* user);
    void release(const void* user);  ///< it is gone: another one may have its address
    void reset();                    ///< silent, all channels as at the start
    /// Plays an event, or, when `stateOnly`, just what lasts: programs, controllers, bends, messages to the device.
    void play(const MidiEvent& event, const MidiSequence& sequence, bool stateOnly);
    void render(float* samples, std::size_t frames);

private:
    std::mutex mutex_;
    struct _fluid_hashtable_t* settings_ = nullptr;
    struct _fluid_synth_t* synth_ = nullptr;
    std::unique_ptr<SoundFont> font_;  ///< outlives the synthesizer
    const void* user_ = nullptr;
    std::atomic<bool> loaded_{false};
};

}  // namespace corvane
