// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/accessible/drawn_access.h"

namespace corvane {

Rectangle DrawnAccess::area() const {
    const PixelPlace place = surface_->place();
    return {0, 0, static_cast<double>(place.width), static_cast<double>(place.height)};
}

void DrawnAccess::focus(Control& control) {
    surface_->frame().activate();
    drawn()->setFocused(&control);
}

}  // namespace corvane
