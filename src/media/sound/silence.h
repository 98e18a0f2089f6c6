// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <string_view>

namespace corvane {

/// CORVANE_AUDIO=null plays in silence, by the clock.
inline bool silenceWanted() {
    const char* const audio = std::getenv("CORVANE_AUDIO");
    return audio != nullptr && std::string_view(audio) == "null";
}

}  // namespace corvane
