// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

struct mpv_handle;

namespace corvane {

/// Ends a player's picture, when nobody else takes its events any more, while frames are still taken by `take`, which
/// is called again and again. The library's own end takes none: it waits until one that is ready is given up, for 200
/// ms or longer, in some versions for ever.
void endMoviePicture(mpv_handle* player, const std::function<void()>& take);

}  // namespace corvane
