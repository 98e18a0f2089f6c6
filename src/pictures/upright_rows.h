// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pictures/picture_pixels.h"

namespace corvane {

/// Puts the rows of a picture that a camera noted as turned where they stand upright.
class UprightRows {
public:
    /// full, held: before it is turned. orientation: 1 to 8 (orientationOf).
    UprightRows(PictureSize full, PictureSize held, int orientation);

    /// Rows come from the top, each once. row: held.width opaque pixels.
    void put(int y, const std::uint32_t* row);
    PicturePixels take() { return std::move(result_); }

private:
    PictureSize held_;
    int orientation_;
    PicturePixels result_;
};

}  // namespace corvane
