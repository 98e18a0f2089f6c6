// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>

#include "platform/event_loop.h"
#include "platform/movie_control.h"
#include "platform/ports.h"

namespace corvane {

class MoviePlayer;
class PulseLink;

/// Keeps the players behind the movie controls: a control takes one when it opens its first movie and gives it back
/// when it goes, so the next movie needs not wait for one to be made. Outlives the controls made by it.
class MoviePlayers {
public:
    /// The loop and the windows (for the screen's size) outlive this.
    MoviePlayers(EventLoop& loop, Windows& windows);
    MoviePlayers(const MoviePlayers&) = delete;
    MoviePlayers& operator=(const MoviePlayers&) = delete;
    ~MoviePlayers();

    /// A control of that form; it is a MovieSurface as well.
    std::unique_ptr<MovieControl> makeControl(Form& form);

    /// An idle player, kept or new. Null when the library cannot make one; `reason` says why, in words.
    std::unique_ptr<MoviePlayer> take(std::string& reason);
    /// Stops a player and keeps it for the next one.
    void giveBack(std::unique_ptr<MoviePlayer> player);

    /// Whether a sound server answers, asked anew now and then; never waits.
    bool soundServerAnswers();

    EventLoop& loop() const { return loop_; }
    Windows& windows() const { return windows_; }

private:
    EventLoop& loop_;
    Windows& windows_;
    std::unique_ptr<MoviePlayer> idle_;
    std::unique_ptr<PulseLink> link_;  ///< made when a movie misses its sound server
    std::chrono::steady_clock::time_point answered_;
};

}  // namespace corvane
