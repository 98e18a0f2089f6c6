// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "pictures/picture_budget.h"

namespace corvane {

/// A decoded picture, or why there is none. It may be held smaller than it is.
struct PicturePixels {
    PictureSize held;  ///< of the pixels
    PictureSize full;  ///< of the picture
    /// Rows from the top, each pixel 0xAARRGGBB with the colours multiplied by their alpha.
    std::vector<std::uint32_t> pixels;
    bool seeThrough = false;  ///< not every pixel is opaque
    std::string reason;       ///< why it failed; empty: it did not
    bool lacksRoom = false;   ///< it failed for want of memory that other pictures hold

    static PicturePixels failed(std::string why, bool forWantOfRoom = false) {
        PicturePixels none;
        none.reason = std::move(why);
        none.lacksRoom = forWantOfRoom;
        return none;
    }
    static PicturePixels damaged() { return failed("The picture is damaged."); }
    static PicturePixels tooLarge(PictureSize size, bool forWantOfRoom = false) {
        return failed("The picture is too large (" + std::to_string(size.width) + " x " + std::to_string(size.height) +
                          " pixels).",
                      forWantOfRoom);
    }
};

/// What a decoder is bound to.
struct DecodingBounds {
    std::int64_t held = 0;          ///< pixels that other pictures hold
    std::function<bool()> givenUp;  ///< asked for each row or piece; true: whatever is returned is dropped
};

/// Takes a picture's rows one after the other and averages them to the size that is held.
class ReducedRows {
public:
    /// Both have an area, and held is no larger than full.
    ReducedRows(PictureSize full, PictureSize held);

    /// Rows come from the top down or from the bottom up, each once. row: full.width pixels, multiplied by their alpha.
    void put(int y, const std::uint32_t* row);
    /// What has come; rows that have not are transparent.
    PicturePixels take();

private:
    void finishRow();
    std::uint32_t* heldRow(int y);

    PicturePixels result_;
    int row_ = -1;                      ///< of the held picture, which the sums belong to
    std::vector<std::uint32_t> sums_;   ///< four channels of each pixel of the row
    std::uint32_t rows_ = 0;            ///< that the sums hold
    std::vector<std::uint32_t> parts_;  ///< how many pixels across make up each
    bool isWhole_;                      ///< nothing is reduced
};

}  // namespace corvane
