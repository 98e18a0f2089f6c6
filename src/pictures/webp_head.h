// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

#include "pictures/picture_budget.h"

namespace corvane {

/// What a WEBP file says of itself as a whole.
struct WebpHead {
    PictureSize size;
    bool moves = false;  ///< it holds several pictures, shown one after the other
    int times = 1;       ///< that all of them are shown; 0: for ever
};
/// Of a file with these bytes; empty: it is none, or of the plain form, which says nothing of that.
std::optional<WebpHead> webpHeadOf(std::string_view bytes);

}  // namespace corvane
