// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

/// Keeps the screen lit and the machine awake while somebody watches. Called on the user-interface thread, by
/// MediaSession alone; returns at once, whatever the desktop's side does. What cannot be had is done without: nobody is
/// told. Lets go by itself when it is destroyed and when the program ends.
class IdleInhibitor {
public:
    virtual ~IdleInhibitor() = default;
    /// True: idling is inhibited from now on; false: let go. The same again changes nothing.
    virtual void inhibit(bool on) = 0;
};

}  // namespace corvane
