// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace corvane {

/// Called before a window that opens by itself is shown. True: another program has the keyboard now, and the window
/// will be shown without taking it. False: it takes it as usual, also where nobody has the keyboard, before a window of
/// this program had it, and where the desktop does not say. Asks the X server.
bool willLeaveFocus(QWidget& window);

}  // namespace corvane
