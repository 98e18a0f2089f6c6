// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_desktop_control.h"

#include <utility>

namespace corvane {

DesktopMovieControl::DesktopMovieControl(Form& form, MoviePlayers& players)
    : MovieStateControl(form, players.loop(), players.windows()), players_(players) {
    ticks_.setInterval(kProgressMs);
    QObject::connect(&ticks_, &QTimer::timeout, &ticks_, [this] { look(); });
    again_.setSingleShot(true);
    QObject::connect(&again_, &QTimer::timeout, &again_, [this] { openMovie(FileName()); });
}

DesktopMovieControl::~DesktopMovieControl() {
    if (player_) players_.giveBack(std::move(player_));
}

bool DesktopMovieControl::borrowPlayer(std::string& reason) {
    if (player_ && player_->stuck()) players_.giveBack(std::move(player_));
    if (player_) return true;
    player_ = players_.take(reason);
    if (!player_) return false;
    player_->listen({[this] { opened(); }, [this](const std::string& why) { failed(why); }, [this] { ended(); },
                     [this] { frameReady.raise(); }, [this] { again_.start(0); }});
    player_->setRate(wantedRate());
    player_->frames().setTarget(target_);
    return true;
}

bool DesktopMovieControl::openMovie(const std::string& path) {
    again_.stop();
    std::string reason;
    if (borrowPlayer(reason)) {
        player_->open(path);
    } else {
        failed(reason);
    }
    return true;
}

void DesktopMovieControl::closeMovie() {
    again_.stop();
    if (player_) player_->close();
}

void DesktopMovieControl::setMovieRate(double rate) {
    if (player_) player_->setRate(rate);
}

void DesktopMovieControl::tick(bool on) {
    if (on) {
        ticks_.start();
    } else {
        ticks_.stop();
    }
}

void DesktopMovieControl::look() {
    player_->checkEnd();
    if (player_->soundLost() && players_.soundServerAnswers()) player_->findSoundAgain();
    progress();
}

void DesktopMovieControl::setTarget(QSize devicePixels) {
    target_ = devicePixels;
    if (player_) player_->frames().setTarget(devicePixels);
}

void DesktopMovieControl::paint(QPainter& painter, const QRect& area) {
    if (player_) player_->frames().paint(painter, area);
}

}  // namespace corvane
