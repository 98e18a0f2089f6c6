// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// The tool kit's platform to ask for, "" to leave it the choice. Window places and staying on top are X11's alone,
/// also where it runs on top of Wayland: it is taken wherever there is a display of it, unless the user chose one.
/// `chosen`: QT_QPA_PLATFORM, `display`: DISPLAY; "" when not set.
inline std::string platformToAskFor(const std::string& chosen, const std::string& display) {
    return chosen.empty() && !display.empty() ? "xcb" : "";
}

}  // namespace corvane
