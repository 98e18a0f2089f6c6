// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/movie_state_control.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "controls/movie_size.h"

namespace corvane {

namespace {

constexpr const char* kThrowAwayName = "1";

}  // namespace

void MovieStateControl::release() {
    ++*number_;
    tick(false);
    fileName_.clear();
    open_ = started_ = ended_ = progressPosted_ = false;
    state_ = kMovieStopped;
    closeMovie();
    screenFillMayHaveChanged();
}

void MovieStateControl::FileName(const std::string& path) {
    release();
    if (path.empty() || path == kThrowAwayName) return;
    fileName_ = path;
    if (openMovie(path)) return;
    fileName_.clear();
    post([this] { Failed.raise("The movie player cannot be started"); });
}

void MovieStateControl::post(EventLoop::Handler event) {
    loop_.post([alive = std::weak_ptr<std::uint64_t>(number_), number = *number_, event = std::move(event)] {
        const auto now = alive.lock();
        if (now && *now == number) event();
    });
}

void MovieStateControl::opened() {
    post([this] {
        open_ = true;
        const MovieExtent extent = movieExtent(ImageSourceWidth(), ImageSourceHeight(), windowSize_,
                                               {windows_.screenWidth(), windows_.screenHeight()});
        SetSize(extent.width, extent.height);
        OpenComplete.raise();
    });
}

void MovieStateControl::failed(const std::string& reason) {
    release();
    post([this, reason] { Failed.raise(reason); });
}

void MovieStateControl::ended() {
    ended_ = true;
    changeState(kMovieStopped);
}

void MovieStateControl::progress() {
    // While a box holds the events back they must not pile up.
    if (state_ != kMovieRunning || progressPosted_) return;
    progressPosted_ = true;
    post([this] {
        progressPosted_ = false;
        if (state_ == kMovieRunning) Progress.raise();
    });
}

void MovieStateControl::changeState(int state) {
    if (state == state_) return;
    const int before = std::exchange(state_, state);
    tick(state == kMovieRunning);
    screenFillMayHaveChanged();
    post([this, before, state, change = ++changes_] {
        // An end that a call has overtaken is not told.
        if (state != kMovieStopped || change == changes_) StateChange.raise(before, state);
    });
}

void MovieStateControl::FullScreenMode(bool on) {
    fullScreen_ = on;
    screenFillMayHaveChanged();
}

double MovieStateControl::CurrentPosition() const {
    if (!started_ || !open_) return 0;
    const double position = playedPosition();
    // 0 means not played yet, also for a file without a length.
    return ended_ ? std::max(position, std::numeric_limits<double>::min()) : position;
}

void MovieStateControl::CurrentPosition(double seconds) {
    if (!open_) return;
    started_ = true;
    ended_ = false;
    seekMovie(seconds);
}

void MovieStateControl::Rate(double rate) {
    rate_ = rate;
    setMovieRate(rate);
}

void MovieStateControl::Run() {
    if (!open_ || state_ == kMovieRunning) return;
    started_ = true;
    ended_ = false;
    playMovie();
    changeState(kMovieRunning);
}

void MovieStateControl::Pause() {
    if (state_ != kMovieRunning) return;
    pauseMovie();
    changeState(kMoviePaused);
}

void MovieStateControl::Stop() {
    ++changes_;
    tick(false);
    state_ = kMovieStopped;
    if (open_) stopMovie();
    screenFillMayHaveChanged();
}

}  // namespace corvane
