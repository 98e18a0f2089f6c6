// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_time.h"

#include <algorithm>

namespace corvane::mdlPublicFunction {

std::int64_t openLengthUs(const Player& player) {
    const auto medium = player.media.current();
    return medium ? medium->lengthUs() : 0;
}

std::int64_t openPositionUs(const Player& player) {
    const auto medium = player.media.current();
    if (!medium) return 0;
    const std::int64_t position = std::max<std::int64_t>(medium->positionUs(), 0);
    const std::int64_t length = medium->lengthUs();
    return length > 0 ? std::min(position, length) : position;
}

bool isProgressing(const Player& player) {
    const auto medium = player.media.current();
    return medium && player.gPlaying && medium->isProgressing();
}

void seekOpenFile(Player& player, std::int64_t positionUs) {
    const auto medium = player.media.current();
    if (medium && medium->lengthUs() > 0) medium->seekTo(positionUs);
}

}  // namespace corvane::mdlPublicFunction
