// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// What the environment says of displays; "" for what is not set.
struct Displays {
    std::string chosen;   ///< QT_QPA_PLATFORM
    std::string x11;      ///< DISPLAY
    std::string wayland;  ///< WAYLAND_DISPLAY
    std::string sway;     ///< SWAYSOCK
};

/// The tool kit's platform to ask for, "" to leave it the choice. Window places and staying on top are X11's alone,
/// also where it runs on top of Wayland: it is taken wherever there is a display of it, unless the user chose one, and
/// unless that compositor puts windows of X11 where it likes as well, which then are only blurred.
inline std::string platformToAskFor(const Displays& there) {
    if (!there.chosen.empty() || there.x11.empty()) return "";
    return !there.sway.empty() && !there.wayland.empty() ? "wayland;xcb" : "xcb";
}

/// Who places the windows, for a reader.
inline std::string windowsTold(const Displays& there) {
    const std::string asked = platformToAskFor(there);
    const std::string platform = asked.empty() ? there.chosen : asked;
    if (platform.empty() && there.wayland.empty()) return "there is no display";
    if (platform.rfind("wayland", 0) == 0 || platform.empty())
        return "placed by the compositor (Wayland): none has a place of its own, none stays on top";
    return platform == "xcb" ? "placed by the player (X11)" : "shown by " + platform;
}

}  // namespace corvane
