// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/rig_windows.h"
#include "linux/media/movies/desktop_movies.h"
#include "linux/windowing/movie_surface.h"
#include "unit/linux/offscreen.h"

namespace corvane::test {

/// A movie control on a form, with what it told.
class MovieRig {
public:
    MovieRig() { makeControl(); }

    void makeControl() {
        control.reset();
        changes.clear();
        reason.clear();
        opened = progress = 0;
        control = movies.makeControl(form);
        surface = dynamic_cast<MovieSurface*>(control.get());
        control->OpenComplete.tie([this] { ++opened; });
        control->Progress.tie([this] { ++progress; });
        control->Failed.tie([this](const std::string& why) { reason = why; });
        control->StateChange.tie([this](int before, int now) { changes.emplace_back(before, now); });
    }

    static bool until(const std::function<bool()>& holds, int milliseconds = 5000) {
        return waitUntil(holds, milliseconds);
    }

    bool open(const std::string& path) {
        const int before = opened;
        control->FileName(path);
        return until([&] { return opened > before || !reason.empty(); }) && reason.empty();
    }

    /// How long a second of the movie takes, between the places that it has reached when it is past these two.
    double secondTakes(double from, double to) const {
        using Steady = std::chrono::steady_clock;
        double place[2] = {};
        Steady::time_point at[2];
        for (const int i : {0, 1}) {
            EXPECT_TRUE(until([&] {
                place[i] = control->CurrentPosition();
                at[i] = Steady::now();
                return place[i] > (i == 0 ? from : to);
            }));
        }
        return std::chrono::duration<double>(at[1] - at[0]).count() / (place[1] - place[0]);
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

    QApplication& qt = offscreenApplication();
    RigLoop loop;
    RigWindows windows;
    DesktopMovies movies{loop, windows};
    Form form{"frmMovieWindow", FormStyle::Media};
    std::unique_ptr<MovieControl> control;
    MovieSurface* surface = nullptr;
    int opened = 0;
    int progress = 0;
    std::vector<std::pair<int, int>> changes;
    std::string reason;
};

}  // namespace corvane::test
