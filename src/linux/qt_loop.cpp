// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_loop.h"

namespace corvane {

void QtLoop::wake() {
    if (woken_ || stopped_) return;
    woken_ = true;
    QMetaObject::invokeMethod(
        &target_,
        [this] {
            woken_ = false;
            if (!stopped_) runPending();
        },
        Qt::QueuedConnection);
}

void QtLoop::stop() {
    stopped_ = true;
    if (!end_) end_.emplace(*this);
}

}  // namespace corvane
