// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/movie_players.h"

#include <utility>

#include "desktop/media/movie_desktop_control.h"
#include "desktop/media/movie_player.h"

namespace corvane {

MoviePlayers::MoviePlayers(EventLoop& loop, Windows& windows) : loop_(loop), windows_(windows) {}

MoviePlayers::~MoviePlayers() = default;

std::unique_ptr<MovieControl> MoviePlayers::makeControl(Form& form) {
    return std::make_unique<DesktopMovieControl>(form, *this);
}

std::unique_ptr<MoviePlayer> MoviePlayers::take() { return idle_ ? std::move(idle_) : MoviePlayer::make(); }

void MoviePlayers::giveBack(std::unique_ptr<MoviePlayer> player) {
    player->listen({});
    player->close();
    if (!idle_) idle_ = std::move(player);
}

}  // namespace corvane
