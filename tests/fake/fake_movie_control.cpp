// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_movie_control.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace corvane {

namespace {

constexpr int kProgressMs = 250;

std::string text(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

}  // namespace

FakeMovieControl::FakeMovieControl(FakeMedia& media, Form& form) : MovieControl(&form), media_(media) {
    media_.movieControls_.push_back(this);
}

FakeMovieControl::~FakeMovieControl() {
    settle();
    media_.schedule.cancel(openId_);
    std::erase(media_.movieControls_, this);
}

template <class Raise>
void FakeMovieControl::post(Raise raise) {
    media_.loop.post([raise, now = present_.ticket()] {
        if (now.isCurrent()) raise();
    });
}

void FakeMovieControl::FileName(const std::string& path) {
    media_.log.did("movie.FileName " + path);
    settle();
    media_.schedule.cancel(openId_);
    present_.next();
    progressWaits_ = false;
    opened_.reset();
    state_ = kMovieStopped;
    position_ = 0;
    fileName_.clear();
    if (path.empty() || path == "1") return;
    fileName_ = path;
    const auto found = media_.movies.find(path);
    FakeMovieFile file;
    file.failure = "no such file";
    if (found != media_.movies.end()) file = found->second;
    openId_ = media_.schedule.at(media_.schedule.now() + file.openMs, [this, file] { finishOpening(file); });
}

void FakeMovieControl::finishOpening(const FakeMovieFile& file) {
    if (!file.failure.empty()) return fail(file.failure);
    post([this, file] {
        opened_ = file;
        size();
        OpenComplete.raise();
    });
}

void FakeMovieControl::fail(const std::string& reason) {
    settle();
    opened_.reset();
    state_ = kMovieStopped;
    fileName_.clear();
    post([this, reason] { Failed.raise(reason); });
}

/// The control has a border of one pixel above and below the picture.
void FakeMovieControl::size() {
    static constexpr std::array<double, 5> kShares = {0, 0, 0.25, 0.5, 0.707};
    if (windowSize_ >= 2) {
        const double share = kShares[static_cast<std::size_t>(std::min(windowSize_, 4))];
        SetSize(static_cast<Twips>(media_.windows.screenWidth() * share),
                static_cast<Twips>(media_.windows.screenHeight() * share));
        return;
    }
    const Twips factor = kTwipsPerPixel * static_cast<Twips>(windowSize_ == 1 ? 2 : 1);
    SetSize(static_cast<Twips>(opened_->width) * factor, static_cast<Twips>(opened_->height) * factor + 30);
}

void FakeMovieControl::MovieWindowSize(int size) {
    media_.log.did("movie.MovieWindowSize " + std::to_string(size));
    windowSize_ = size;
}

void FakeMovieControl::FullScreenMode(bool on) {
    media_.log.did(on ? "movie.FullScreenMode on" : "movie.FullScreenMode off");
    fullScreen_ = on;
}

double FakeMovieControl::CurrentPosition() const {
    media_.log.asked("movie.CurrentPosition");
    return positionNow();
}

double FakeMovieControl::positionNow() const {
    if (state_ != kMovieRunning || !opened_) return position_;
    const auto passed = static_cast<double>(media_.schedule.now() - startedAt_) / 1000;
    return std::min(position_ + passed * rate_, opened_->seconds);
}

void FakeMovieControl::CurrentPosition(double seconds) {
    media_.log.did("movie.CurrentPosition " + text(seconds));
    if (!opened_) return;
    settle();
    position_ = std::clamp(seconds, 0.0, Duration());
    if (state_ == kMovieRunning) plan();
}

void FakeMovieControl::Rate(double rate) {
    media_.log.did("movie.Rate " + text(rate));
    settle();
    rate_ = rate;
    if (state_ == kMovieRunning) plan();
}

void FakeMovieControl::Run() {
    media_.log.did("movie.Run");
    if (!opened_ || state_ == kMovieRunning) return;
    settle();
    change(kMovieRunning);
    plan();
}

void FakeMovieControl::Pause() {
    media_.log.did("movie.Pause");
    if (state_ != kMovieRunning) return;
    settle();
    change(kMoviePaused);
}

void FakeMovieControl::Stop() {
    media_.log.did("movie.Stop");
    settle();
    state_ = kMovieStopped;
    ++changes_;
}

void FakeMovieControl::change(int state) {
    const int old = state_;
    state_ = state;
    const int change = ++changes_;
    post([this, old, state, change] {
        // A stop that was asked for is not told, nor an end that a call has overtaken.
        if (state != kMovieStopped || change == changes_) StateChange.raise(old, state);
    });
}

void FakeMovieControl::settle() {
    position_ = positionNow();
    startedAt_ = media_.schedule.now();
    media_.schedule.cancel(endId_);
    media_.schedule.cancel(progressId_);
}

void FakeMovieControl::plan() {
    const double leftMs = (Duration() - position_) / rate_ * 1000;
    endId_ = media_.schedule.at(startedAt_ + static_cast<std::int64_t>(std::ceil(leftMs)), [this] {
        media_.schedule.cancel(progressId_);
        position_ = Duration();
        change(kMovieStopped);
    });
    planProgress();
}

void FakeMovieControl::planProgress() {
    progressId_ = media_.schedule.at(media_.schedule.now() + kProgressMs, [this] {
        planProgress();
        if (progressWaits_) return;
        progressWaits_ = true;
        media_.loop.post([this, now = present_.ticket()] {
            if (!now.isCurrent()) return;
            progressWaits_ = false;
            if (state_ == kMovieRunning) Progress.raise();
        });
    });
}

}  // namespace corvane
