// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <string>

#include "platform/event_loop.h"

namespace corvane::test {

/// The application that worker threads post to; made once, whoever needs it first, and without a display.
inline QCoreApplication& soundApplication() {
    static int count = 1;
    static char name[] = "test";
    static char* names[] = {name, nullptr};
    if (qApp == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Never destroyed: at exit the input devices that it owns would outlive their list.
        static auto* const made = new QApplication(count, names);
        (void)made;
    }
    return *qApp;
}

/// The event loop over Qt's.
class SoundLoop : public EventLoop {
protected:
    void wake() override {
        QMetaObject::invokeMethod(
            &receiver_, [this] { runPending(); }, Qt::QueuedConnection);
    }

private:
    QObject receiver_;
};

/// Runs the events until the condition holds; false: it did not within the time.
inline bool soundWaits(const std::function<bool()>& holds, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    QTimer poll;  // the condition is looked at between events, at least so often
    poll.start(5);
    while (!holds()) {
        if (clock.elapsed() > milliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

inline std::string soundSample(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/samples/" + name; }
inline std::string soundData(const std::string& name) {
    return std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/" + name;
}

}  // namespace corvane::test
