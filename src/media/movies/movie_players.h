// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "media/movies/graphics_choice.h"
#include "media/movies/movie_player.h"

namespace corvane {

class PulseLink;

/// Keeps the players behind the movie controls: a control takes one when it opens its first movie and gives it back
/// when it goes, so the next movie needs not wait for one to be made. Outlives the controls made by it.
class MoviePlayers {
public:
    /// How movies are drawn where this was chosen; asked for each player.
    using Drawing = MovieDrawing (*)(GraphicsChoice choice);
    MoviePlayers(MovieMeans means, Drawing how);
    MoviePlayers(const MoviePlayers&) = delete;
    MoviePlayers& operator=(const MoviePlayers&) = delete;
    ~MoviePlayers();

    /// Whether movies are shown by the graphics driver; counts for players made from now on.
    void chooseGraphics(GraphicsChoice choice) { choice_ = choice; }
    /// The driver was of no use: movies are painted from now on.
    void leaveGraphics() { choice_ = GraphicsChoice::Off; }

    /// A movie is likely to be asked for: has the library loaded and a player made, in a worker, unless there is one.
    void prepare();
    /// An idle player, kept or new. Null when the library cannot make one; `reason` says why, in words.
    std::unique_ptr<MoviePlayer> take(std::string& reason);
    /// Stops a player and keeps it for the next one.
    void giveBack(std::unique_ptr<MoviePlayer> player);

    /// Whether a sound server answers, asked anew now and then; never waits.
    bool soundServerAnswers();

private:
    MovieDrawing drawing() const { return drawing_(choice_); }

    const MovieMeans means_;
    const Drawing drawing_;
    UiPost post_;
    GraphicsChoice choice_ = GraphicsChoice::Auto;
    bool preparing_ = false;
    int taken_ = 0;  ///< players that controls have
    std::unique_ptr<MoviePlayer> idle_;
    std::unique_ptr<PulseLink> link_;  ///< made when a movie misses its sound server
    std::chrono::steady_clock::time_point answered_;
};

}  // namespace corvane
