// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QSize>
#include <cstdint>
#include <functional>
#include <memory>

struct mpv_handle;
struct mpv_render_context;

namespace corvane {

/// The frames of one player, drawn by software into memory in the size in which they are painted. Used on the
/// user-interface thread; the player's own threads only announce frames.
class MovieFrames {
public:
    /// announce: called on any thread when update() should be called soon. Destroy before the player, when nobody else
    /// takes the player's events any more.
    MovieFrames(mpv_handle* player, std::function<void()> announce);
    MovieFrames(const MovieFrames&) = delete;
    MovieFrames& operator=(const MovieFrames&) = delete;
    ~MovieFrames();

    /// Nothing is announced any more, and no frame is taken: it may go on any thread.
    void hush();
    bool usable() const { return context_ != nullptr; }

    /// The picture's own shape; empty: nothing is to be seen (a movie is only being opened, or has no picture).
    void setPicture(QSize pixels);
    /// The size of the area to be painted, device pixels.
    void setTarget(QSize devicePixels) { target_ = devicePixels; }
    /// Takes the next frame when there is one. True: paint() gives a new picture.
    bool update();
    /// Draws the frame fitted into the area; nothing without one.
    void paint(QPainter& painter, const QRect& area);

private:
    void draw(QSize pixels);
    void endPicture();

    mpv_handle* player_;
    std::function<void()> announce_;
    mpv_render_context* context_ = nullptr;
    QSize picture_;
    QSize target_;
    std::unique_ptr<std::uint8_t, void (*)(void*)> pixels_;
    QImage image_;       ///< a view of pixels_
    bool stale_ = true;  ///< the player has a frame that image_ does not show
    bool seen_ = false;  ///< the player has a frame at all
};

}  // namespace corvane
