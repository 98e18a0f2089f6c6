// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/windows_mci_control.h"

#include <utility>

namespace corvane {

namespace {

constexpr int kMostOpenWaitMs = 200;
constexpr UINT_PTR kUpdateTimer = 1;
constexpr UINT_PTR kOpeningTimer = 2;
constexpr UINT_PTR kWaitingTimer = 3;

}  // namespace

WindowsMciControl::WindowsMciControl(MciStation& station)
    : MciStateControl(station.loop),
      station_(station),
      timers_([this](UINT message, WPARAM timer, LPARAM) { return handle(message, timer); }) {}

std::optional<LRESULT> WindowsMciControl::handle(UINT message, WPARAM timer) {
    if (message != WM_TIMER) return std::nullopt;
    if (timer == kWaitingTimer) {
        // Something else's device hangs: this one need not wait for it.
        if (session_ && !session_->begun()) station_.thread.replaceIfHung(static_cast<int>(longestJob));
    } else if (timer == kOpeningTimer) {
        giveUpOpening();
    } else {
        updateDue();
    }
    return 0;
}

void WindowsMciControl::tick(int intervalMs) {
    if (intervalMs > 0) {
        SetTimer(timers_.handle(), kUpdateTimer, static_cast<UINT>(intervalMs), nullptr);
    } else {
        KillTimer(timers_.handle(), kUpdateTimer);
    }
}

/// What the session tells comes back to this thread, unless another one or none has taken its place.
MciSession::Listener WindowsMciControl::listener() {
    const auto back = [post = station_.post, still = stillOpen()](std::function<void()> event) {
        post([still, event = std::move(event)] {
            if (still()) event();
        });
    };
    return {[this, back] {
                back([this] {
                    if (Opening()) adopt();
                });
            },
            [this, back](const std::string& reason) { back([this, reason] { failed(reason); }); },
            [this, back](std::uint64_t number, std::int64_t place) {
                back([this, number, place] { partEnded(number, place); });
            }};
}

void WindowsMciControl::openIt() {
    session_ = std::make_shared<MciSession>(station_.thread, MciSession::Source{DeviceType(), fileName(), level()},
                                            listener());
    // A drive, a share or a driver may never answer.
    station_.thread.replaceIfHung(static_cast<int>(longestJob));
    SetTimer(timers_.handle(), kWaitingTimer, longestJob, nullptr);
    SetTimer(timers_.handle(), kOpeningTimer, DeviceType() == "CDAudio" ? longestDiscOpening : longestOpening, nullptr);
    session_->open();
    session_->waitOpened(kMostOpenWaitMs);
    const MciSession::Facts facts = session_->facts();
    if (!facts.reason.empty()) return failed(facts.reason);
    if (facts.opened) adopt();
}

void WindowsMciControl::giveUpOpening() {
    KillTimer(timers_.handle(), kOpeningTimer);
    if (!Opening()) return;
    station_.thread.replaceIfHung(static_cast<int>(longestJob));
    later([this] {
        if (Opening()) failed("It did not open in time.");
    });
}

void WindowsMciControl::adopt() {
    KillTimer(timers_.handle(), kOpeningTimer);
    KillTimer(timers_.handle(), kWaitingTimer);
    axis_ = session_->facts().axis;
    opened();
}

void WindowsMciControl::closeIt() {
    KillTimer(timers_.handle(), kOpeningTimer);
    KillTimer(timers_.handle(), kWaitingTimer);
    if (session_) session_->close();
    session_.reset();
    axis_ = {};
    part_ = 0;
}

std::string WindowsMciControl::playPart(std::uint64_t number, std::int64_t from, std::int64_t to) {
    part_ = number;
    session_->play(number, {from, to});
    return {};
}

}  // namespace corvane
