// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/application.h"

#include <QEvent>

#include "drives/spare_descriptors.h"

namespace corvane {

bool Application::notify(QObject* receiver, QEvent* event) {
    // What a window draws into is asked for from the display's server in one of these, when it is first shown and
    // whenever it has grown. None of them runs handlers of ours or a loop.
    if (event->type() != QEvent::Expose && event->type() != QEvent::UpdateRequest)
        return QApplication::notify(receiver, event);
    const SpareDescriptors::Loan loan;
    return QApplication::notify(receiver, event);
}

}  // namespace corvane
