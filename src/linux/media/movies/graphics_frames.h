// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <deque>
#include <memory>

#include "linux/media/movies/seen_frames.h"
#include "linux/windowing/plain_child.h"
#include "media/movies/graphics_drawing.h"

namespace corvane {

/// Frames that the graphics driver shows, in a window of their own that lies on the one they are shown in. What stands
/// on them is handed to the library as a picture.
class GraphicsFrames : public SeenFrames {
public:
    /// announce: called on any thread when update() should be called soon.
    GraphicsFrames(mpv_handle* player, bool evenBySoftware, std::function<void()> announce);
    ~GraphicsFrames() override;

    State state() const override;
    void hush() override;
    bool end() override;
    void setPicture(PictureSize pixels) override;
    bool update() override;
    bool handle(const mpv_event& event) override;
    void paint(QPainter& /*painter*/, const QRect& /*area*/) override {}
    bool isShown() const override { return true; }
    void showIn(QWidget& window, const QRect& area, const Above& above) override;
    void leave() override;

private:
    void layAbove(const QRect& place, double ratio, const Above& above);
    void dropAbove();
    void lookLater();

    mpv_handle* player_;
    std::function<void()> announce_;
    std::shared_ptr<GraphicsDrawing> drawing_;
    std::unique_ptr<QTimer> look_ = std::make_unique<QTimer>();  ///< whether what was asked for last was done
    std::unique_ptr<PlainChild> child_;
    PixelSize picture_;
    QRect shown_;                ///< device pixels of the window
    QImage above_;               ///< as the library has it; null: nothing
    std::deque<QImage> handed_;  ///< that the library has not answered for yet, the oldest first
    bool waited_ = false;        ///< for the first frame of a picture
    bool refused_ = false;
};

}  // namespace corvane
