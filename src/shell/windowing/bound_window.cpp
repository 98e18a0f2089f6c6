// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/bound_window.h"

#include <utility>

namespace corvane {

BoundWindow::~BoundWindow() { stopObserving(); }

void BoundWindow::bind() {
    form_->addObserver(this);
    for (Control* control : form_->controls()) control->addObserver(this);
    observing_ = true;
    onBound();
}

void BoundWindow::unbind() {
    if (!bound()) return;
    stopObserving();
    onUnbinding();
    frame().putAway();
    form_ = nullptr;
    alive_.reset();
}

void BoundWindow::stopObserving() {
    if (!observing_) return;
    observing_ = false;
    form_->removeObserver(this);
    for (Control* control : form_->controls()) control->removeObserver(this);
}

void BoundWindow::enter(const EventLoop::Handler& handler) {
    if (bound()) loop_.enter(handler);
}

void BoundWindow::post(EventLoop::Handler handler) {
    loop_.post([handler = std::move(handler), alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired()) handler();
    });
}

}  // namespace corvane
