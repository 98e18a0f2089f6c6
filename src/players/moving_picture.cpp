// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/moving_picture.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "engine/mdlPublicFunction.h"

namespace corvane {

namespace {

bool mayHoldSeveral(const Player& player) {
    const std::string type = mdlPublicFunction::typeOf(player.conveniences, player.openedPath);
    return type == "GIF" || type == "WEBP";
}

}  // namespace

MovingPicture::MovingPicture(Player& player)
    : player_(player), quiet_(player.ports.loop, EventLoop::When::Quiet, [this] { look(); }) {}

MovingPicture::~MovingPicture() { stopClock(); }

void MovingPicture::look() {
    if (!mayMove()) return end();
    if (opening_ != player_.opening) {
        end();
        begin();
    }
    if (!frames_) return;
    if (!isSeen()) {
        if (!std::exchange(due_, true)) stopClock();
    } else if (due_) {
        showNext();
    }
}

bool MovingPicture::mayMove() const {
    if (!player_.conveniences.kinds || player_.gInterval != 0 || player_.pictureAwaited) return false;
    if (!player_.media.playsIn(FormId::ImageWindow)) return false;
    const auto* const shown = window();
    if (shown == nullptr || shown->pctImage.Picture.get().empty() || !mayHoldSeveral(player_)) return false;
    return !player_.ports.windows.prefersReducedMotion();
}

/// Nothing is decoded for a window that is held, minimised or hidden.
bool MovingPicture::isSeen() const {
    const auto* const shown = window();
    return player_.gPlaying && shown->Visible && shown->WindowState != WindowState::Minimized;
}

void MovingPicture::begin() {
    opening_ = player_.opening;
    frames_ =
        player_.ports.pictures.frames(player_.openedPath, [this](Pictures::Frame frame) { come(std::move(frame)); });
    due_ = true;
}

void MovingPicture::end() {
    stopClock();
    opening_.reset();
    frames_.reset();
    next_.reset();
    asked_ = due_ = false;
}

void MovingPicture::ask() {
    if (std::exchange(asked_, true)) return;
    frames_->next();
}

void MovingPicture::come(Pictures::Frame frame) {
    asked_ = false;
    const auto* const shown = window();
    const bool fits = shown != nullptr && frame.picture.width() == shown->pctImage.Picture.get().width() &&
                      frame.picture.height() == shown->pctImage.Picture.get().height();
    if (frame.picture.empty() || !fits) {
        frames_.reset();  // what is shown stays
        return;
    }
    next_ = std::move(frame);  // shown when the handlers are over, if it is due
}

void MovingPicture::showNext() {
    if (!next_) return ask();
    const Pictures::Frame frame = *std::exchange(next_, std::nullopt);
    due_ = false;
    window()->pctImage.Picture = frame.picture;
    if (frame.isLast) {
        frames_.reset();
        return;
    }
    ask();
    rest(std::max(frame.milliseconds, leastMs()));
}

int MovingPicture::leastMs() const {
    const auto* const shown = window();
    const double pixels = shown->Width / kTwipsPerPixel * (shown->Height / kTwipsPerPixel);
    return std::max(kLeastFrameMs, static_cast<int>(std::min(pixels / kMostPaintedInMs, 1000.0)));
}

void MovingPicture::rest(int milliseconds) {
    stopClock();
    clock_ = player_.ports.timers.start(milliseconds, [this, ticket = running_.ticket()] {
        player_.ports.timers.stop(std::exchange(clock_, 0));
        player_.ports.loop.post([this, ticket] {
            if (ticket.isCurrent()) due_ = true;
        });
    });
}

void MovingPicture::stopClock() {
    running_.next();
    if (clock_ != 0) player_.ports.timers.stop(std::exchange(clock_, 0));
}

}  // namespace corvane
