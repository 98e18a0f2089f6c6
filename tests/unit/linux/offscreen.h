// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "platform/event_loop.h"

namespace corvane::test {

/// The application of a test program, which worker threads post to; without a display, made once by whoever needs it
/// first.
inline QApplication& offscreenApplication() {
    static int count = 1;
    static char name[] = "test";
    static char* names[] = {name, nullptr};
    if (qApp == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Never destroyed: at exit the devices that made-up input events need would outlive their list.
        static auto* const made = new QApplication(count, names);
        (void)made;
        QApplication::setQuitOnLastWindowClosed(false);
    }
    return *qApp;
}

/// The event loop over Qt's, without the desktop's own.
class RigLoop : public EventLoop {
protected:
    void wake() override {
        QMetaObject::invokeMethod(
            &receiver_, [this] { runPending(); }, Qt::QueuedConnection);
    }

private:
    QObject receiver_;
};

/// Runs Qt's events until the condition holds; false: it did not in time. A round of events counts as no longer than
/// one takes: what a busy machine holds this program up by is not taken from what it waits for.
inline bool waitUntil(const std::function<bool()>& condition, int atMostMs = 3000) {
    constexpr qint64 kMostARound = 20;
    offscreenApplication();
    QElapsedTimer round;
    round.start();
    QTimer poll;  // the condition is looked at between events, at least so often
    poll.start(5);
    for (qint64 passed = 0;; passed += std::min(round.restart(), kMostARound)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);  // also those that come of others
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (condition()) return true;
        if (passed > atMostMs) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

/// A folder of its own for one test, gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "corvane-test-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code failed;
        std::filesystem::remove_all(path_, failed);
    }
    const std::string& path() const { return path_; }
    std::string in(const std::string& name) const { return path_ + '/' + name; }
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(in(name), std::ios::binary) << bytes;
    }
    std::string bytes(const std::string& name) const {
        std::ostringstream all;
        all << std::ifstream(in(name), std::ios::binary).rdbuf();
        return all.str();
    }

private:
    std::string path_;
};

}  // namespace corvane::test
