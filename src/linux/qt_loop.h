// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include "program/woken_loop.h"

namespace corvane {

/// The event loop over Qt's: a batch of posted events is a queued call.
class QtLoop : public WokenLoop {
protected:
    bool callSoon() override {
        return QMetaObject::invokeMethod(
            &target_, [this] { called(); }, Qt::QueuedConnection);
    }

private:
    QObject target_;
};

}  // namespace corvane
