// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_players.h"

#include <utility>

#include "media/movies/movie_handle.h"
#include "media/sound/pulse_link.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kAnswerHolds{2};

}  // namespace

MoviePlayers::MoviePlayers(MovieMeans means, Drawing how)
    : means_(std::move(means)), drawing_(how), post_(means_.post.another()) {}

MoviePlayers::~MoviePlayers() { post_.stop(); }

void MoviePlayers::prepare() {
    if (idle_ || preparing_ || taken_ > 0) return;
    preparing_ = true;
    struct Made {
        MovieHandle handle;
        std::string reason;
    };
    const auto made = std::make_shared<Made>();
    const auto keep = [this, made] {
        preparing_ = false;
        if (!idle_ && taken_ == 0) idle_ = MoviePlayer::make(std::move(made->handle), means_, drawing(), made->reason);
        // Somebody was quicker: one that is not needed goes where nobody waits for it.
        if (made->handle) Worker::run([made](const Worker::GiveUp&) { made->handle.reset(); });
    };
    const auto make = [made, keep, post = post_](const Worker::GiveUp& givenUp) {
        if (!givenUp) made->handle = makeMovieHandle(made->reason);
        post(keep);
    };
    // Without a thread the player is made when the movie is opened.
    if (!Worker::run(make, [keep, post = post_] { post(keep); })) preparing_ = false;
}

std::unique_ptr<MoviePlayer> MoviePlayers::take(std::string& reason) {
    if (idle_) idle_->checkFrames();
    if (idle_ && idle_->stuck()) {
        leaveGraphics();
        idle_.reset();
    }
    std::unique_ptr<MoviePlayer> player = idle_ ? std::move(idle_) : MoviePlayer::make(means_, drawing(), reason);
    if (player) ++taken_;
    return player;
}

void MoviePlayers::giveBack(std::unique_ptr<MoviePlayer> player) {
    --taken_;
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
