// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/upright_rows.h"

#include <algorithm>
#include <utility>

#include "pictures/picture_check.h"

namespace corvane {

UprightRows::UprightRows(PictureSize full, PictureSize held, int orientation) : held_(held), orientation_(orientation) {
    if (swapsSides(orientation)) {
        std::swap(full.width, full.height);
        std::swap(held.width, held.height);
    }
    result_.full = full;
    result_.held = held;
    result_.pixels.resize(static_cast<std::size_t>(held.pixels()));
}

void UprightRows::put(int y, const std::uint32_t* row) {
    const std::ptrdiff_t width = result_.held.width;
    const std::ptrdiff_t below = held_.height - 1 - y;
    const std::ptrdiff_t last = held_.width - 1;
    // Where the row's first pixel stands, and how far the next one is.
    std::ptrdiff_t at = y * width;
    std::ptrdiff_t step = 1;
    switch (orientation_) {
        case 2:
            at = y * width + last, step = -1;
            break;
        case 3:
            at = below * width + last, step = -1;
            break;
        case 4:
            at = below * width;
            break;
        case 5:
            at = y, step = width;
            break;
        case 6:
            at = below, step = width;
            break;
        case 7:
            at = last * width + below, step = -width;
            break;
        case 8:
            at = last * width + y, step = -width;
            break;
        default:
            break;
    }
    std::uint32_t* const pixels = result_.pixels.data();
    if (step == 1) {
        std::copy_n(row, held_.width, pixels + at);
        return;
    }
    for (int x = 0; x < held_.width; ++x, at += step) pixels[at] = row[x];
}

}  // namespace corvane
