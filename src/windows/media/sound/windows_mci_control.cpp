// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/sound/windows_mci_control.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr int kDefaultInterval = 1000;
constexpr int kMostOpenWaitMs = 200;
constexpr UINT_PTR kUpdateTimer = 1;
constexpr UINT_PTR kOpeningTimer = 2;
constexpr UINT_PTR kWaitingTimer = 3;

}  // namespace

WindowsMciControl::WindowsMciControl(MciStation& station)
    : station_(station),
      interval_(kDefaultInterval),
      updates_([this](UINT message, WPARAM timer, LPARAM) { return handle(message, timer); }) {}

std::optional<LRESULT> WindowsMciControl::handle(UINT message, WPARAM timer) {
    if (message != WM_TIMER) return std::nullopt;
    if (timer == kWaitingTimer) {
        // Something else's device hangs: this one need not wait for it.
        if (session_ && !session_->begun()) station_.thread.replaceIfHung(static_cast<int>(longestJob));
    } else if (timer == kOpeningTimer) {
        giveUpOpening();
    } else if (!std::exchange(updatePosted_, true)) {
        later([this] {
            updatePosted_ = false;
            if (state_ == State::Playing) StatusUpdate.raise();
        });
    }
    return 0;
}

WindowsMciControl::~WindowsMciControl() { closeDevice(); }

/// Posts an event that is dropped when the control has gone.
void WindowsMciControl::later(EventLoop::Handler event) {
    station_.loop.post([alive = std::weak_ptr(alive_), event = std::move(event)] {
        if (!alive.expired()) event();
    });
}

void WindowsMciControl::change(State state) {
    const bool played = std::exchange(state_, state) == State::Playing;
    if (state == State::Playing && !played) {
        SetTimer(updates_.handle(), kUpdateTimer, static_cast<UINT>(interval_), nullptr);
    } else if (state != State::Playing) {
        KillTimer(updates_.handle(), kUpdateTimer);
    }
}

void WindowsMciControl::UpdateInterval(int milliseconds) {
    interval_ = std::max(1, milliseconds);
    if (state_ == State::Playing) SetTimer(updates_.handle(), kUpdateTimer, static_cast<UINT>(interval_), nullptr);
}

/// What the session tells comes back to this thread, unless another session or none has taken its place.
MciSession::Listener WindowsMciControl::listener() {
    const auto back = [this, post = station_.post, alive = std::weak_ptr(alive_),
                       opening = ticket_](std::function<void()> event) {
        post([this, alive, opening, event = std::move(event)] {
            if (!alive.expired() && session_ && session_->opening() == opening) event();
        });
    };
    return {[this, back] { back([this] { adopt(); }); },
            [this, back](const std::string& reason) { back([this, reason] { failed(reason); }); },
            [this, back](std::uint64_t number, std::int64_t place) {
                back([this, number, place] { ended(number, place); });
            }};
}

void WindowsMciControl::openDevice() {
    closeDevice();
    session_ = std::make_shared<MciSession>(station_.thread, MciSession::Source{DeviceType(), fileName(), ticket_},
                                            listener());
    change(State::Stopped);
    watchOpening();
    session_->open();
    session_->waitOpened(kMostOpenWaitMs);
    const MciSession::Facts facts = session_->facts();
    if (facts.opened) adopt();
    if (!facts.reason.empty()) {
        closeDevice();
        later([this, reason = facts.reason, ticket = ticket_] {
            if (ticket == ticket_) Failed.raise(reason);
        });
    }
}

/// A drive, a share or a driver may never answer.
void WindowsMciControl::watchOpening() {
    station_.thread.replaceIfHung(static_cast<int>(longestJob));
    SetTimer(updates_.handle(), kWaitingTimer, longestJob, nullptr);
    SetTimer(updates_.handle(), kOpeningTimer, DeviceType() == "CDAudio" ? longestDiscOpening : longestOpening,
             nullptr);
}

void WindowsMciControl::giveUpOpening() {
    KillTimer(updates_.handle(), kOpeningTimer);
    if (!session_ || opened_) return;
    station_.thread.replaceIfHung(static_cast<int>(longestJob));
    later([this, ticket = session_->opening()] {
        if (session_ && session_->opening() == ticket && !opened_) failed("It did not open in time.");
    });
}

/// The device is open: what was asked for in the time format is counted from now on.
void WindowsMciControl::adopt() {
    if (std::exchange(opened_, true)) return;
    KillTimer(updates_.handle(), kOpeningTimer);
    KillTimer(updates_.handle(), kWaitingTimer);
    axis_ = session_->facts().axis;
    if (const Place wanted = std::exchange(wantedAt_, std::nullopt)) at_ = axis_.fromPlace(*wanted, timeFormat());
}

void WindowsMciControl::failed(const std::string& reason) {
    closeDevice();
    Failed.raise(reason);
}

void WindowsMciControl::closeDevice() {
    ++ticket_;
    KillTimer(updates_.handle(), kOpeningTimer);
    KillTimer(updates_.handle(), kWaitingTimer);
    if (session_) session_->close();
    session_.reset();
    change(State::Closed);
    opened_ = hasPart_ = endedPaused_ = false;
    axis_ = {};
    at_ = 0;
    wantedAt_.reset();
}

/// The device stands where it is; the session is told what comes instead by who calls this.
void WindowsMciControl::leavePart() {
    if (opened_) at_ = here();
    hasPart_ = endedPaused_ = false;
}

void WindowsMciControl::play(Place from, Place to) {
    if (hasPart_ && !from && to == partEnd_ && !endedPaused_) {
        if (state_ == State::Playing) return;
        change(State::Playing);
        session_->resume(ticket_);
        return;
    }
    leavePart();
    if (!from && !opened_) from = wantedAt_;
    if (!opened_) wantedAt_ = from;
    hasPart_ = true;
    partEnd_ = to;
    change(State::Playing);
    session_->play(++ticket_, {from, to, at_, timeFormat()});
}

void WindowsMciControl::ended(std::uint64_t playNumber, std::int64_t end) {
    if (playNumber != ticket_) return;
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

void WindowsMciControl::pause() {
    if (state_ != State::Playing) return;
    change(State::Paused);
    session_->pause(ticket_);
}

void WindowsMciControl::stop() {
    leavePart();
    change(State::Stopped);
    session_->stop(++ticket_);
}

void WindowsMciControl::seek(std::int32_t to) {
    const bool stopped = state_ == State::Stopped;
    leavePart();
    if (opened_) {
        at_ = axis_.fromPlace(to, timeFormat());
    } else {
        wantedAt_ = to;
    }
    change(stopped ? State::Stopped : State::Paused);
    session_->stop(++ticket_);
}

std::int64_t WindowsMciControl::here() const { return hasPart_ ? session_->position() : at_; }

std::int32_t WindowsMciControl::TrackLength() const { return opened_ ? axis_.trackLength(track()) : 0; }

std::int32_t WindowsMciControl::Length() const { return opened_ ? axis_.toPlace(axis_.length, timeFormat()) : 0; }

std::int32_t WindowsMciControl::Position() const {
    if (state_ == State::Closed) return 0;
    return opened_ ? axis_.toPlace(here(), timeFormat()) : wantedAt_.value_or(0);
}

}  // namespace corvane
