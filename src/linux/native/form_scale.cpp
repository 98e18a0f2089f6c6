// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/form_scale.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

double pixels(Twips twips) { return static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel); }

}  // namespace

void FormScale::makeRoom(QSize wanted, Twips width, Twips height) {
    if (width > 0) across_ = std::max(across_, wanted.width() / pixels(width));
    if (height > 0) down_ = std::max(down_, wanted.height() / pixels(height));
}

int FormScale::x(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * across_)); }

int FormScale::y(Twips twips) const { return static_cast<int>(std::lround(pixels(twips) * down_)); }

QRect FormScale::rectangle(const Control& control) const {
    // Edges are rounded, not sizes: neighbours that touch still touch.
    const QPoint topLeft(x(control.Left), y(control.Top));
    const QPoint end(x(control.Left + control.Width), y(control.Top + control.Height));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

}  // namespace corvane
