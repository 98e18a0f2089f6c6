// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_state_control.h"

#include <algorithm>
#include <utility>

namespace corvane {

void MciStateControl::Command(std::string_view command) {
    if (command != "Open" && state_ == State::Closed) return;
    const Place from = std::exchange(from_, std::nullopt);
    const Place to = std::exchange(to_, std::nullopt);
    if (command == "Open") {
        openDevice();
    } else if (command == "Close") {
        closeDevice();
    } else if (command == "Play") {
        play(from, to);
    } else if (command == "Pause") {
        pause();
    } else if (command == "Stop") {
        stop();
    } else if (command == "Seek") {
        seek(to.value_or(0));
    } else {
        from_ = from;
        to_ = to;
    }
}

std::function<bool()> MciStateControl::stillOpen() const {
    return [alive = std::weak_ptr(opening_), opening = *opening_] {
        const auto now = alive.lock();
        return now && *now == opening;
    };
}

void MciStateControl::later(EventLoop::Handler event) {
    loop_.post([still = stillOpen(), event = std::move(event)] {
        if (still()) event();
    });
}

void MciStateControl::change(State state) {
    const bool played = std::exchange(state_, state) == State::Playing;
    if ((state == State::Playing) != played) tick(played ? 0 : interval_);
}

void MciStateControl::UpdateInterval(int milliseconds) {
    interval_ = std::max(1, milliseconds);
    if (state_ == State::Playing) tick(interval_);
}

void MciStateControl::updateDue() {
    // While a box holds the events back they must not pile up.
    if (state_ != State::Playing || std::exchange(updatePosted_, true)) return;
    later([this] {
        updatePosted_ = false;
        if (state_ == State::Playing) StatusUpdate.raise();
    });
}

void MciStateControl::openDevice() {
    closeDevice();
    change(State::Opening);
    openIt();
}

/// What was asked for meanwhile is done now.
void MciStateControl::opened() {
    change(State::Stopped);
    const Wish wish = std::exchange(wish_, {});
    if (wish.at) seek(*wish.at);
    if (wish.play) play(std::nullopt, wish.to);
    if (wish.hold) pause();
}

void MciStateControl::failed(const std::string& reason) {
    closeDevice();
    later([this, reason] { Failed.raise(reason); });
}

void MciStateControl::closeDevice() {
    ++*opening_;
    ++ticket_;
    leavePart();
    change(State::Closed);
    closeIt();
    wish_ = {};
    at_ = 0;
    updatePosted_ = false;
}

/// Takes our part out of the device, remembering the place.
void MciStateControl::leavePart() {
    at_ = here();
    if (std::exchange(hasPart_, false)) stopPart();
    endedPaused_ = false;
}

void MciStateControl::play(Place from, Place to) {
    if (state_ == State::Opening) {
        // Without a place it goes on from where it stands, as it will when it is open.
        wish_ = {from ? from : wish_.at, to, true, false};
        return;
    }
    const std::int64_t start = from ? units(*from) : here();
    const std::int64_t end = to ? axis().endOf(*to, start, timeFormat_) : kToEnd;
    if (hasPart_ && !from && end == partEnd_) {
        if (state_ == State::Playing) return;
        change(State::Playing);
        resumePart();
        if (std::exchange(endedPaused_, false)) startPart(here(), end);
        return;
    }
    leavePart();
    startPart(start, end);
}

void MciStateControl::startPart(std::int64_t from, std::int64_t to) {
    const std::uint64_t number = ++ticket_;
    at_ = from;
    partEnd_ = to;
    change(State::Playing);
    const std::int64_t length = axis().units();
    hasPart_ = !(length > 0 && from >= length) && (to == kToEnd || from < to);
    if (!hasPart_) return later([this, number, from] { partEnded(number, from); });
    if (const std::string reason = playPart(number, from, to); !reason.empty()) {
        hasPart_ = false;
        failed(reason);
    }
}

void MciStateControl::partEnded(std::uint64_t number, std::int64_t end) {
    if (number != ticket_) return;
    if (state_ != State::Playing) {
        endedPaused_ = state_ == State::Paused;
        return;
    }
    leavePart();
    ++ticket_;
    at_ = end;
    change(State::Stopped);
    Done.raise(kNotifySuccessful);
}

void MciStateControl::pause() {
    wish_.hold = wish_.play && state_ == State::Opening;
    if (state_ != State::Playing) return;
    change(State::Paused);
    if (hasPart_) pausePart();
}

void MciStateControl::stop() {
    wish_.play = wish_.hold = false;
    if (state_ == State::Opening) return;
    ++ticket_;
    leavePart();
    change(State::Stopped);
}

void MciStateControl::seek(std::int32_t to) {
    if (state_ == State::Opening) {
        wish_ = {to, std::nullopt, false, false};
        return;
    }
    ++ticket_;
    const bool stopped = state_ == State::Stopped;
    leavePart();
    at_ = units(to);
    change(stopped ? State::Stopped : State::Paused);
}

std::int64_t MciStateControl::here() const {
    const std::int64_t played = hasPart_ ? partPosition() : -1;
    return played >= 0 ? played : at_;
}

std::int32_t MciStateControl::Position() const {
    if (!isReady()) return wish_.at.value_or(0);
    // A track that has been played to its end stands at its own last place, not at the start of the next one.
    const std::int64_t now = here();
    const bool atEnd = timeFormat_ == kFormatTmsf && hasPart_ && now == partEnd_;
    return axis().toPlace(atEnd ? now - 1 : now, timeFormat_);
}

}  // namespace corvane
