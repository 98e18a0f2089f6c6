// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QColor>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/rig_windows.h"
#include "linux/media/movies/movie_players.h"
#include "linux/windowing/movie_surface.h"

namespace corvane::test {

/// The application that the library's threads marshal to; made once, without a display.
inline QApplication& application() {
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

class RigLoop : public EventLoop {
protected:
    void wake() override {
        QMetaObject::invokeMethod(
            &receiver_, [this] { runPending(); }, Qt::QueuedConnection);
    }

private:
    QObject receiver_;
};

/// A movie control on a form, with what it told.
class MovieRig {
public:
    MovieRig() { makeControl(); }

    void makeControl() {
        control.reset();
        changes.clear();
        reason.clear();
        opened = progress = 0;
        control = players.makeControl(form);
        surface = dynamic_cast<MovieSurface*>(control.get());
        control->OpenComplete.tie([this] { ++opened; });
        control->Progress.tie([this] { ++progress; });
        control->Failed.tie([this](const std::string& why) { reason = why; });
        control->StateChange.tie([this](int before, int now) { changes.emplace_back(before, now); });
    }

    /// Runs the events until the condition holds; false: it did not within the time.
    static bool until(const std::function<bool()>& holds, int milliseconds = 5000) {
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

    bool open(const std::string& path) {
        const int before = opened;
        control->FileName(path);
        return until([&] { return opened > before || !reason.empty(); }) && reason.empty();
    }

    static std::string sample(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/samples/" + name; }

    /// What is painted into an area of that size.
    QImage painted(QSize size) const {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::black);
        QPainter painter(&picture);
        surface->paint(painter, QRect(QPoint(), size));
        return picture;
    }

    /// Whether a pixel of the patch has about that colour (0xRRGGBB).
    bool shows(QRgb colour) const {
        const QColor seen = painted({320, 240}).pixelColor(20, 20);
        const QColor wanted(colour);
        const auto near = [](int a, int b) { return std::abs(a - b) <= 6; };
        return near(seen.red(), wanted.red()) && near(seen.green(), wanted.green()) && near(seen.blue(), wanted.blue());
    }

    QApplication& qt = application();
    RigLoop loop;
    RigWindows windows;
    MoviePlayers players{loop, windows};
    Form form{"frmMovieWindow", FormStyle::Media};
    std::unique_ptr<MovieControl> control;
    MovieSurface* surface = nullptr;
    int opened = 0;
    int progress = 0;
    std::vector<std::pair<int, int>> changes;
    std::string reason;
};

}  // namespace corvane::test
