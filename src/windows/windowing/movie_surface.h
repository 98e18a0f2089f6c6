// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/event.h"
#include "windows/api.h"

namespace corvane {

/// What a movie control of this desktop is besides its MovieControl: a video window that can be put into another one.
/// The control class derives from both; the media window finds it by dynamic_cast, ties the event when its form is
/// attached and unties it when it is detached. All calls and events are on the user-interface thread.
class MovieSurface {
public:
    MovieSurface() = default;
    MovieSurface(const MovieSurface&) = delete;
    MovieSurface& operator=(const MovieSurface&) = delete;
    virtual ~MovieSurface() = default;

    /// The window to show the video in as a child, and the part of its client area (device pixels) to fit it into;
    /// null: nowhere, the host goes. Called when the form is attached (before a movie is opened, as a rule), each time
    /// the area changes, and when full screen is entered or left (the host is another window then). Mouse and keys on
    /// the video belong to the host.
    virtual void setHost(HWND host, const RECT& area) = 0;
    /// FullScreenMode is on and a movie is running or paused: the window shows its whole-screen surface.
    virtual bool fillsScreen() const = 0;

    Event<> fillsScreenChanged;  ///< fillsScreen() may have changed
};

}  // namespace corvane
