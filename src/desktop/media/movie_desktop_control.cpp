// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/movie_desktop_control.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "toolkit/movie_size.h"

namespace corvane {

namespace {

constexpr int kProgressMs = 250;
constexpr const char* kThrowAwayName = "1";

}  // namespace

DesktopMovieControl::DesktopMovieControl(Form& form, MoviePlayers& players) : MovieControl(&form), players_(players) {
    ticks_.setInterval(kProgressMs);
    QObject::connect(&ticks_, &QTimer::timeout, &ticks_, [this] { progress(); });
}

DesktopMovieControl::~DesktopMovieControl() {
    if (player_) players_.giveBack(std::move(player_));
}

bool DesktopMovieControl::borrowPlayer() {
    if (player_) return true;
    player_ = players_.take();
    if (!player_) return false;
    player_->listen({[this] { opened(); }, [this](const std::string& reason) { failed(reason); }, [this] { ended(); },
                     [this] { frameReady.raise(); }});
    player_->setRate(rate_);
    player_->frames().setTarget(target_);
    return true;
}

void DesktopMovieControl::release() {
    ++*number_;
    ticks_.stop();
    fileName_.clear();
    open_ = started_ = ended_ = progressPosted_ = false;
    state_ = kMovieStopped;
    if (player_) player_->close();
    fillsScreenChanged.raise();
}

void DesktopMovieControl::FileName(const std::string& path) {
    release();
    if (path.empty() || path == kThrowAwayName) return;
    if (!borrowPlayer()) {
        post([this] { Failed.raise("The movie library cannot be started"); });
        return;
    }
    fileName_ = path;
    player_->open(path);
}

void DesktopMovieControl::post(EventLoop::Handler event) {
    players_.loop().post([alive = std::weak_ptr<std::uint64_t>(number_), number = *number_, event = std::move(event)] {
        const auto now = alive.lock();
        if (now && *now == number) event();
    });
}

void DesktopMovieControl::opened() {
    post([this] {
        open_ = true;
        Windows& windows = players_.windows();
        const MovieExtent extent = movieExtent(ImageSourceWidth(), ImageSourceHeight(), windowSize_,
                                               {windows.screenWidth(), windows.screenHeight()});
        SetSize(extent.width, extent.height);
        OpenComplete.raise();
    });
}

void DesktopMovieControl::failed(const std::string& reason) {
    release();
    post([this, reason] { Failed.raise(reason); });
}

void DesktopMovieControl::ended() {
    ended_ = true;
    changeState(kMovieStopped);
}

void DesktopMovieControl::progress() {
    player_->checkEnd();
    if (player_->soundLost() && players_.soundServerAnswers()) player_->findSoundAgain();
    // While a box holds the events back they must not pile up.
    if (state_ != kMovieRunning || progressPosted_) return;
    progressPosted_ = true;
    post([this] {
        progressPosted_ = false;
        if (state_ == kMovieRunning) Progress.raise();
    });
}

void DesktopMovieControl::changeState(int state) {
    if (state == state_) return;
    const int before = std::exchange(state_, state);
    if (state == kMovieRunning) {
        ticks_.start();
    } else {
        ticks_.stop();
    }
    fillsScreenChanged.raise();
    post([this, before, state, change = ++changes_] {
        // An end that a call has overtaken is not told.
        if (state != kMovieStopped || change == changes_) StateChange.raise(before, state);
    });
}

void DesktopMovieControl::FullScreenMode(bool on) {
    fullScreen_ = on;
    fillsScreenChanged.raise();
}

bool DesktopMovieControl::fillsScreen() const { return fullScreen_ && state_ != kMovieStopped; }

double DesktopMovieControl::Duration() const { return open_ ? player_->duration() : 0; }

double DesktopMovieControl::CurrentPosition() const {
    if (!started_) return 0;
    const double position = player_->position();
    // 0 means not played yet, also for a file without a length.
    return ended_ ? std::max(position, std::numeric_limits<double>::min()) : position;
}

void DesktopMovieControl::CurrentPosition(double seconds) {
    if (!open_) return;
    started_ = true;
    ended_ = false;
    player_->seek(seconds);
}

void DesktopMovieControl::Rate(double rate) {
    rate_ = rate;
    if (player_) player_->setRate(rate);
}

int DesktopMovieControl::ImageSourceWidth() const { return open_ ? player_->picture().width() : 0; }

int DesktopMovieControl::ImageSourceHeight() const { return open_ ? player_->picture().height() : 0; }

void DesktopMovieControl::Run() {
    if (!open_ || state_ == kMovieRunning) return;
    started_ = true;
    ended_ = false;
    player_->play();
    changeState(kMovieRunning);
}

void DesktopMovieControl::Pause() {
    if (state_ != kMovieRunning) return;
    player_->pause();
    changeState(kMoviePaused);
}

void DesktopMovieControl::Stop() {
    ++changes_;
    ticks_.stop();
    state_ = kMovieStopped;
    if (player_) player_->pause();
    fillsScreenChanged.raise();
}

void DesktopMovieControl::setTarget(QSize devicePixels) {
    target_ = devicePixels;
    if (player_) player_->frames().setTarget(devicePixels);
}

void DesktopMovieControl::paint(QPainter& painter, const QRect& area) {
    if (player_) player_->frames().paint(painter, area);
}

}  // namespace corvane
