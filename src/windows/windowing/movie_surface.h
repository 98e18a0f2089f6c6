// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/screen_filling.h"
#include "winapi/api.h"

namespace corvane {

/// What a movie control of this desktop is besides its MovieControl: a video window that can be put into another one.
/// The control class derives from both. All calls and events are on the user-interface thread.
class MovieSurface : public ScreenFilling {
public:
    /// The window to show the video in as a child, and the part of its client area (device pixels) to fit it into;
    /// null: nowhere, the host goes. Called when the form is attached (before a movie is opened, as a rule), each time
    /// the area changes, and when full screen is entered or left (the host is another window then). Mouse and keys on
    /// the video belong to the host.
    virtual void setHost(HWND host, const RECT& area) = 0;
};

}  // namespace corvane
