// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_players.h"

#include <utility>

#include "linux/media/movies/movie_desktop_control.h"
#include "linux/media/movies/movie_player.h"
#include "media/sound/pulse_link.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kAnswerHolds{2};

}  // namespace

MoviePlayers::MoviePlayers(EventLoop& loop, Windows& windows) : loop_(loop), windows_(windows) {}

MoviePlayers::~MoviePlayers() = default;

std::unique_ptr<MovieControl> MoviePlayers::makeControl(Form& form) {
    return std::make_unique<DesktopMovieControl>(form, *this);
}

std::unique_ptr<MoviePlayer> MoviePlayers::take(std::string& reason) {
    return idle_ ? std::move(idle_) : MoviePlayer::make(reason);
}

void MoviePlayers::giveBack(std::unique_ptr<MoviePlayer> player) {
    player->listen({});
    player->close();
    if (!idle_ && !player->stuck()) idle_ = std::move(player);
}

bool MoviePlayers::soundServerAnswers() {
    // A player needs a moment to take the server up: it is not told again at once.
    const auto now = std::chrono::steady_clock::now();
    if (now - answered_ < kAnswerHolds) return false;
    if (!link_) link_ = std::make_unique<PulseLink>("Corvane");
    if (!link_->ready(0)) return false;
    answered_ = now;
    link_.reset();
    return true;
}

}  // namespace corvane
