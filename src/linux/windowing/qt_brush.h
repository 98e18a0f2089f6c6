// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QRegion>

#include "linux/windowing/form_window.h"
#include "linux/windowing/scaled_picture.h"
#include "shell/windowing/surface.h"

namespace corvane {

/// Draws the controls of a form with the tool kit's painter. A skin is composed at its own resolution, or at the one of
/// its pictures for dense screens; texts and discs are drawn at the screen's.
class QtBrush final : public Brush {
public:
    /// region: what must be painted, inside of a widget of the frame's size. scaled: kept for the next painting.
    QtBrush(QPainter& painter, const QRegion& region, const QtFrame& frame, ScaledPicture& scaled)
        : painter_(painter), region_(region), frame_(frame), scaled_(scaled) {}

    void skin(const Picture& background, const std::vector<CompositionStep>& steps) override;
    void disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) override;
    void text(const std::string& text, const Rectangle& place, Colour colour,
              const std::vector<Rectangle>& covered) override;
    void pictures(const std::vector<ShownPicture>& pictures) override;

private:
    /// False: nothing of the place is to be painted. Ended by restore() of the painter.
    bool clip(const QRectF& place, const std::vector<Rectangle>& covered);
    double scale() const { return frame_.context().scale; }

    QPainter& painter_;
    QRegion region_;
    const QtFrame& frame_;
    ScaledPicture& scaled_;
};

}  // namespace corvane
