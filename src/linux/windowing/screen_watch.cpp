// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/screen_watch.h"

#include <QGuiApplication>
#include <QScreen>

namespace corvane {

ScreenWatch::ScreenWatch(std::function<void()> changed) {
    soon_.setSingleShot(true);
    soon_.setInterval(0);
    connect(&soon_, &QTimer::timeout, this, std::move(changed));
    const auto tell = [this] { soon_.start(); };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        soon_.start();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, tell);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, tell);
    for (QScreen* const screen : QGuiApplication::screens()) watch(screen);
}

void ScreenWatch::watch(QScreen* screen) {
    const auto tell = [this] { soon_.start(); };
    connect(screen, &QScreen::geometryChanged, this, tell);
    connect(screen, &QScreen::availableGeometryChanged, this, tell);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, tell);
}

}  // namespace corvane
