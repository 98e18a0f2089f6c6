// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "media/movies/tone_map.h"
#include "pictures/picture_budget.h"

struct mpv_event;
struct mpv_handle;

namespace corvane {

/// The frames of one player, as far as the player is concerned; how they are seen is a desktop's (PaintedFrames,
/// GraphicsFrames). Used on the user-interface thread, but for end(); the player's own threads only announce frames.
class MovieFrames {
public:
    enum class State {
        Beginning,  ///< no movie can be opened yet; it is announced when one can
        Ready,
        Lost  ///< for good: the movie goes on with another player
    };

    MovieFrames() = default;
    MovieFrames(const MovieFrames&) = delete;
    MovieFrames& operator=(const MovieFrames&) = delete;
    virtual ~MovieFrames() = default;

    virtual State state() const = 0;
    /// Nothing is announced any more, and no frame is taken: it may end on any thread.
    virtual void hush() = 0;
    /// Before the player goes, when nobody else takes its events any more; once. False: what draws does not come back,
    /// and uses the player.
    virtual bool end() = 0;

    /// The picture's own shape; empty: nothing is to be seen (a movie is only being opened, or has no picture).
    virtual void setPicture(PictureSize pixels) = 0;
    /// How its light is meant; none: as ordinary screens show it. Told before its shape.
    virtual void setLight(const std::optional<FilmLight>& /*light*/) {}
    /// How long the last frame took.
    virtual std::chrono::milliseconds drawingTook() const { return {}; }
    /// Looks for the next frame. True: a new picture can be painted, or shown.
    virtual bool update() = 0;
    /// Takes a frame that has come and was not painted: one that is not taken in time holds the player up.
    virtual void take() {}
    /// An answer of the library. False: it is not for this.
    virtual bool handle(const mpv_event& /*event*/) { return false; }
    /// Whether the graphics driver shows frames beside what is painted.
    virtual bool isShown() const { return false; }
};

}  // namespace corvane
