// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "media/sound/sound_backend.h"
#include "workers/worker.h"

namespace corvane {

/// The one output, kept warm while sounds come and go. Plays one sound at a time with a reading thread that sleeps
/// while nothing plays. Without a sound server it plays on in silence, and is heard again when the server is back. All
/// calls are made on the user-interface thread and return at once; what they ask for, the reading thread does.
class SoundOutput {
public:
    /// What is played: a sound from a place of its axis to another.
    struct Part {
        std::shared_ptr<SoundBackend> sound;
        std::int64_t from = 0;
        std::int64_t to = 0;  ///< kToEnd: to its end
        /// The end is told so long before it is heard: what comes next is opened meanwhile and follows without a gap.
        double earlySeconds = 0;
        /// On the reading thread, once: the part was heard to its end, which was this frame.
        std::function<void(std::int64_t end)> ended;
        /// Sought but not read until release(), at most kMostHeldBack: a pause in the same breath leaves no sound.
        bool heldBack = false;
    };
    static constexpr std::int64_t kToEnd = -1;
    static constexpr std::chrono::milliseconds kMostHeldBack{500};

    /// `silent`: never look for a sound server.
    explicit SoundOutput(bool silent);
    /// Waits a moment for what is being read; what hangs in a decoder is left behind.
    ~SoundOutput();
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    /// Connects to the server and makes a stream, so that the first sound comes at once.
    void warmUp();
    /// Starts the part in place of whatever plays. The number names it in the calls below, which do nothing once
    /// another part was started. 0: the system refuses the reading thread, and nothing plays.
    std::uint64_t play(Part part);
    void release(std::uint64_t part);  ///< a part that is held back is heard from now on
    void pause(std::uint64_t part);
    void resume(std::uint64_t part);
    void stop(std::uint64_t part);  ///< silent at once; a part that has ended rings out
    /// The frame that is heard now; where it stopped when it does not play. Never goes back. -1: another part plays.
    std::int64_t position(std::uint64_t part) const;

private:
    class Reader;
    bool runs();
    void command(const std::function<void()>& change);

    std::shared_ptr<Reader> reader_;  ///< held by its thread as well
    Worker thread_;
};

}  // namespace corvane
