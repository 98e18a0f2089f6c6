// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/movies/windows_movie_control.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "winapi/text.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr UINT kNews = WM_APP;
constexpr UINT kEndAgain = WM_APP + 1;
constexpr UINT_PTR kTick = 1;
constexpr UINT_PTR kOpening = 2;
/// A graph that stands at its end so many ticks has lost its word of it.
constexpr int kTicksForLostEnd = 6;

/// Keeps COM's shared apartment for the workers' graphs, also when no worker is left.
void keepApartment() {
    static const bool kept = [] {
        CO_MTA_USAGE_COOKIE cookie{};
        return SUCCEEDED(CoIncrementMTAUsage(&cookie));
    }();
    (void)kept;
}

}  // namespace

WindowsMovieControl::WindowsMovieControl(Form& form, EventLoop& loop, UiPost post, Windows& windows)
    : MovieStateControl(form, loop, windows),
      post_(std::move(post)),
      messages_([this](UINT message, WPARAM first, LPARAM second) { return handle(message, first, second); }) {
    keepApartment();
}

WindowsMovieControl::~WindowsMovieControl() {
    fillsScreenChanged.tie({});
    release();
}

std::optional<LRESULT> WindowsMovieControl::handle(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_TIMER && first == kOpening) {
        giveUp();
        return 0;
    }
    if (message == WM_TIMER) {
        look();
        progress();
        return 0;
    }
    if (message == kNews && graph_ && second == *turn_) takeNews();
    if (message == kEndAgain && graph_ && second == *turn_) reachEnd();
    return message == kNews || message == kEndAgain ? std::optional<LRESULT>(0) : std::nullopt;
}

bool WindowsMovieControl::openMovie(const std::string& path) {
    if (hanging_ >= mostHanging) {
        post_([this, turn = std::weak_ptr(turn_), number = *turn_] {
            const auto now = turn.lock();
            if (now && *now == number) failed("Too many movies before it do not answer.");
        });
        return true;
    }
    auto built = [this, post = post_, turn = std::weak_ptr(turn_), number = *turn_](FilterGraph::Built result) {
        auto shared = std::make_shared<FilterGraph::Built>(std::move(result));
        post([this, turn, number, shared] {
            const auto now = turn.lock();
            if (now && *now == number) adopt(std::move(*shared));
        });
    };
    SetTimer(messages_.handle(), kOpening, longestOpening, nullptr);
    // Not waited for: a drive that hangs must not hang us.
    opening_ = std::make_shared<std::atomic<Opening>>(Opening::Wanted);
    const auto ended = [opening = opening_] {
        if (opening->exchange(Opening::Ended) == Opening::GivenUp) --hanging_;
    };
    const auto build = [path = toWide(path), built, ended](const Worker::GiveUp&) {
        const ComThread com(COINIT_MULTITHREADED);
        built(FilterGraph::build(path));
        ended();
    };
    const auto broken = [built, ended] {
        ended();
        built({nullptr, Worker::kBroken});
    };
    if (Worker::run(build, broken)) return true;
    opening_.reset();
    KillTimer(messages_.handle(), kOpening);
    return false;
}

/// What is built after all belongs to a turn that is over, and is let go.
void WindowsMovieControl::giveUp() { failed("It did not open in time."); }

void WindowsMovieControl::adopt(FilterGraph::Built built) {
    KillTimer(messages_.handle(), kOpening);
    if (!built.graph) return failed(built.reason);
    graph_ = std::move(built.graph);
    graph_->notify(messages_.handle(), kNews, *turn_);
    graph_->setRate(wantedRate());
    graph_->show(host_, area_);
    opened();
}

/// Its worker goes on by itself, for as long as a drive or a decoder holds it.
void WindowsMovieControl::leaveOpening() {
    if (!opening_) return;
    ++hanging_;
    Opening wanted = Opening::Wanted;
    if (!opening_->compare_exchange_strong(wanted, Opening::GivenUp)) --hanging_;
    opening_.reset();
}

void WindowsMovieControl::closeMovie() {
    KillTimer(messages_.handle(), kOpening);
    leaveOpening();
    ++*turn_;
    graph_.reset();
    target_.reset();
    playing_ = atEnd_ = false;
}

void WindowsMovieControl::takeNews() {
    const FilterGraph::News news = graph_->takeEvents();
    if (news == FilterGraph::News::Aborted) return failed("The movie cannot be played on.");
    if (news == FilterGraph::News::Ended && playing_) reachEnd();
}

void WindowsMovieControl::reachEnd() {
    playing_ = false;
    atEnd_ = true;
    target_.reset();
    graph_->stop();
    ended();
}

/// An end that was not told is seen by the position that no longer moves.
void WindowsMovieControl::look() {
    const double length = graph_ ? graph_->duration() : 0;
    const bool there = playing_ && length > 0 && graph_->position() >= length;
    looksAtEnd_ = there ? looksAtEnd_ + 1 : 0;
    if (looksAtEnd_ >= kTicksForLostEnd) reachEnd();
}

void WindowsMovieControl::playMovie() {
    if (atEnd_) {
        PostMessageW(messages_.handle(), kEndAgain, 0, *turn_);
        return;
    }
    playing_ = true;
    graph_->run();
}

void WindowsMovieControl::pauseMovie() {
    playing_ = false;
    graph_->pause();
}

void WindowsMovieControl::seekMovie(double seconds) {
    const double length = graph_->duration();
    target_ = std::clamp(seconds, 0.0, length > 0 ? length : std::max(seconds, 0.0));
    atEnd_ = length > 0 && *target_ >= length && !playing_;
    ++*turn_;
    graph_->seek(*target_);
    graph_->notify(messages_.handle(), kNews, *turn_);
}

void WindowsMovieControl::setMovieRate(double rate) {
    if (graph_) graph_->setRate(rate);
}

double WindowsMovieControl::playedPosition() const {
    const double length = graph_->duration();
    if (atEnd_ && length > 0) return length;
    const double now = graph_->position();
    if (target_ && (!playing_ || now < *target_)) return *target_;
    // In hundredths, below any frame's time: the panel shows the number as it is.
    const double rounded = std::round(now * 100) / 100;
    return length > 0 && (now >= length || rounded > length) ? length : rounded;
}

void WindowsMovieControl::tick(bool on) {
    looksAtEnd_ = 0;
    if (on) {
        SetTimer(messages_.handle(), kTick, kProgressMs, nullptr);
    } else {
        KillTimer(messages_.handle(), kTick);
    }
}

void WindowsMovieControl::setHost(HWND host, const RECT& area) {
    host_ = host;
    area_ = area;
    if (graph_) graph_->show(host, area);
}

}  // namespace corvane
