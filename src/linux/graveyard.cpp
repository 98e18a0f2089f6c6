// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/graveyard.h"

#include <QAbstractEventDispatcher>
#include <QThread>
#include <utility>

namespace corvane {

Graveyard::Graveyard(EventLoop& loop) : loop_(loop) {
    if (auto* const dispatcher = QAbstractEventDispatcher::instance()) {
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            if (!gone_.empty() && isQuiet()) burySoon();  // a nested loop has ended
        });
    }
}

Graveyard::~Graveyard() = default;

void Graveyard::lay(std::shared_ptr<void> gone) {
    gone_.push_back(std::move(gone));
    burySoon();
}

bool Graveyard::isQuiet() const { return loop_.depth() == 0 && QThread::currentThread()->loopLevel() <= 1; }

void Graveyard::burySoon() {
    QMetaObject::invokeMethod(
        this, [this] { bury(); }, Qt::QueuedConnection);
}

void Graveyard::bury() {
    if (!isQuiet()) return;
    const auto gone = std::exchange(gone_, {});  // a window may take others with it
}

}  // namespace corvane
