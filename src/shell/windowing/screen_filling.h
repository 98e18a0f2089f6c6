// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/event.h"

namespace corvane {

/// What a movie control of every desktop is besides its MovieControl. The media window finds it by dynamic_cast, ties
/// the event when its form is attached and unties it when it is detached. All on the user-interface thread.
class ScreenFilling {
public:
    ScreenFilling() = default;
    ScreenFilling(const ScreenFilling&) = delete;
    ScreenFilling& operator=(const ScreenFilling&) = delete;
    virtual ~ScreenFilling() = default;

    /// FullScreenMode is on and a movie is running or paused: the window shows its whole-screen surface.
    virtual bool fillsScreen() const = 0;

    Event<> fillsScreenChanged;  ///< fillsScreen() may have changed
};

}  // namespace corvane
