// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "linux/qt_post.h"
#include "linux/qt_time.h"
#include "media/movies/movie_players.h"
#include "platform/ports.h"

namespace corvane {

/// What players of movies have of this desktop.
MovieMeans movieMeans(Timers& timers, const UiPost& post);

/// The movie controls of this desktop, and what they share. Outlives them.
class DesktopMovies {
public:
    /// The loop and the windows (for the screen's size) outlive this.
    /// ownFolder: the program's, for frames where the user keeps no pictures; "" none.
    DesktopMovies(EventLoop& loop, Windows& windows, std::string ownFolder = "");
    DesktopMovies(const DesktopMovies&) = delete;
    DesktopMovies& operator=(const DesktopMovies&) = delete;
    ~DesktopMovies() { post_.stop(); }

    /// A control of that form; it is a MovieSurface as well.
    std::unique_ptr<MovieControl> makeControl(Form& form);

    MoviePlayers& players() { return players_; }
    EventLoop& loop() const { return loop_; }
    Windows& windows() const { return windows_; }
    const std::string& ownFolder() const { return ownFolder_; }

private:
    EventLoop& loop_;
    Windows& windows_;
    std::string ownFolder_;
    QtTimers timers_;
    QtPost post_;
    MoviePlayers players_;
};

}  // namespace corvane
