// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

class QScreen;

namespace corvane {

/// Tells once, from the event loop, after screens have come, gone, moved or changed their size, density or the room on
/// them.
class ScreenWatch : public QObject {
public:
    explicit ScreenWatch(std::function<void()> changed);

private:
    void watch(QScreen* screen);

    QTimer soon_;  ///< a change of screens is told by many signals
};

}  // namespace corvane
