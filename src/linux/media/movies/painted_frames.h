// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>

#include "linux/media/movies/seen_frames.h"
#include "media/movies/software_drawing.h"

namespace corvane {

/// Frames that are drawn by software into memory in the size in which they are painted.
class PaintedFrames : public SeenFrames {
public:
    /// announce: called on any thread when update() should be called soon.
    PaintedFrames(mpv_handle* player, std::function<void()> announce) : drawing_(player, std::move(announce)) {}

    State state() const override { return drawing_.draws() ? State::Ready : State::Lost; }
    void hush() override { drawing_.hush(); }
    bool end() override;
    void setPicture(PictureSize pixels) override;
    void setLight(const std::optional<FilmLight>& light) override { drawing_.setLight(light); }
    void setTarget(QSize devicePixels) override { target_ = {devicePixels.width(), devicePixels.height()}; }
    QImage whole() override;
    std::chrono::milliseconds drawingTook() const override { return drawing_.took(); }
    bool update() override;
    bool isDue() const override { return due_; }
    void take() override;
    QRect covered(const QRect& area, double ratio) const override;
    void paint(QPainter& painter, const QRect& area) override;

private:
    FrameRoom roomIn(const QRect& area, double ratio) const { return {picture_, pixelsOf(area), ratio, target_}; }
    bool drawOn(QPainter& painter, const QRectF& place, QSize pixels);
    void draw(PixelSize pixels);
    bool isSeen() const { return seen_ && picture_ != PixelSize(); }

    SoftwareDrawing drawing_;
    PixelSize picture_, target_;
    QImage image_;       ///< a view of what was drawn
    bool due_ = false;   ///< the player has a frame that was not taken
    bool stale_ = true;  ///< the player has a frame that image_ does not show
    bool seen_ = false;  ///< the player has a frame at all
};

}  // namespace corvane
