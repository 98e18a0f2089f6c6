// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "forms/controls.h"

namespace corvane {

inline constexpr int kMovieStopped = 0;
inline constexpr int kMoviePaused = 1;
inline constexpr int kMovieRunning = 2;

/// A part of a movie.
struct MovieChapter {
    double seconds = 0;  ///< where it begins
    std::string title;   ///< one harmless line; "" none
};

/// The movie control: shows one movie on its form. Assigning a file name opens the movie and does not start it: the
/// position is exactly 0 until the first Run, and the duration after the end. Events are posted through the EventLoop,
/// never raised from inside a call; events of an earlier file, and Progress posted before a Pause or Stop, are dropped.
/// The picture is fitted into the part of the control that its form shows, keeping its shape. Proved by
/// tests/contract/movie_control_contract.
class MovieControl : public MouseControl {
public:
    explicit MovieControl(Form* owner) : MouseControl(owner, ControlKind::Movie, "amvMovie") {}

    /// Opens the file; OpenComplete or Failed follows. "" or "1" releases the movie held.
    virtual void FileName(const std::string& path) = 0;
    virtual const std::string& FileName() const = 0;  ///< "" when none is open
    /// 0 the movie's own size, 1 double, 2, 3, 4 the given shares (1/4, 1/2, 0.707) of the screen's width and height.
    /// Takes effect at OpenComplete: Width and Height (twips) are set before the event; at 0 and 1 Height is the
    /// picture's plus 30 twips.
    virtual void MovieWindowSize(int size) = 0;
    /// True: while running or paused the movie fills the screen in a surface of its own, whose keys and mouse reach the
    /// form's and this control's events.
    virtual void FullScreenMode(bool on) = 0;
    virtual bool FullScreenMode() const = 0;

    virtual double Duration() const = 0;         ///< seconds; 0 unknown
    virtual double CurrentPosition() const = 0;  ///< seconds; reads a value just set at once
    virtual void CurrentPosition(
        double seconds) = 0;  ///< held inside 0 to Duration; late ones are dropped, never queued
    virtual double Rate() const = 0;
    virtual void Rate(double rate) = 0;        ///< default 1.0
    virtual int ImageSourceWidth() const = 0;  ///< pixels, the movie's own size; 0 without a picture
    virtual int ImageSourceHeight() const = 0;

    virtual void Run() = 0;
    virtual void Pause() = 0;
    virtual void Stop() = 0;  ///< stops and raises no StateChange to stopped
    virtual int State() const = 0;

    // What a movie carries besides. A desktop without it leaves it; nothing happens unless a movie is open.
    /// The next of its subtitles, at first none: those inside the file, those beside it, none. Says on the picture
    /// which.
    virtual void NextSubtitles() {}
    virtual void NextSoundTrack() {}  ///< the next of the sounds that it can be heard with; says which
    virtual std::vector<MovieChapter> Chapters() const { return {}; }  ///< in order
    /// Saves the picture that is seen as `name`.png where the user keeps pictures, over no other file; says where it
    /// went, or why it did not.
    virtual void SaveFrame(const std::string& /*name*/) {}
    virtual void ShowText(const std::string& /*text*/) {}  ///< one line on the picture, for a moment

    Event<> OpenComplete;
    Event<int, int>
        StateChange;   ///< old and new: kMovieStopped, kMoviePaused, kMovieRunning; stopped: the end was reached
    Event<> Progress;  ///< about every 250 ms while running
    Event<std::string> Failed;  ///< the reason, in words
};

}  // namespace corvane
