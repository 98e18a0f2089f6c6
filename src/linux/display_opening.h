// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "linux/window_system.h"

namespace corvane {

Displays displaysOfEnvironment();

/// Why no display was opened, for one line. `display` and `wayland`: DISPLAY and WAYLAND_DISPLAY, "" when not set;
/// `chosen`: QT_QPA_PLATFORM, "" when the user set none; `remark`: what the tool kit said of it first, "" for nothing.
std::string whyNoDisplay(const std::string& display, const std::string& wayland, const std::string& chosen,
                         const std::string& remark);

/// While it lives, a tool kit that finds no display to open ends the program with one line on the error stream and code
/// 1, where it would abort with a dump. What it remarks is kept until then, and handed on when a display was opened.
/// One at a time, around the making of the application.
class DisplayOpening {
public:
    /// chosen: QT_QPA_PLATFORM as the user set it.
    explicit DisplayOpening(std::string chosen);
    DisplayOpening(const DisplayOpening&) = delete;
    DisplayOpening& operator=(const DisplayOpening&) = delete;
    /// Hands on what was remarked.
    ~DisplayOpening();
};

}  // namespace corvane
