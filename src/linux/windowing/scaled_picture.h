// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRectF>

#include "forms/picture.h"

class QPainter;

namespace corvane {

/// Draws one picture stretched. A reduced picture is averaged down once and kept for the next painting; an enlarged one
/// is enlarged as it is drawn, the visible part only, so that any enlargement costs no memory.
class ScaledPicture {
public:
    /// place: the whole stretched picture, visible: what must be drawn of it; logical pixels of the painter.
    void draw(QPainter& painter, const Picture& picture, const QRectF& place, const QRectF& visible);
    void clear();

private:
    Picture picture_;
    QImage reduced_;
};

}  // namespace corvane
