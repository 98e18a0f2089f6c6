// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "linux/window_system.h"

namespace corvane {

/// Which of a user's sessions a player is seen in, by the display of its windows. "" where there is none of a kind.
struct SessionDisplay {
    std::string x11;
    std::string wayland;

    static SessionDisplay of(const Displays& there);
    /// As it is kept for others to read. A text of any other form reads as far as it makes sense.
    static SessionDisplay read(std::string_view text);
    std::string text() const;

    /// Whether the other one is surely of another session: both have a display of a kind, and not the same.
    bool isOther(const SessionDisplay& there) const;
    /// For a reader, in one line; "" without any.
    std::string name() const;
};

}  // namespace corvane
