// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvane {

/// How loud a sound is played, and how exactly its ends are kept.
enum class SoundLevel : std::uint8_t {
    AsRecorded,  ///< as its samples are
    OfTrack,  ///< by what its tags say of it alone; what its coder put before and behind it is left out to the sample
    OfAlbum   ///< the same, by what its tags say of its album
};

}  // namespace corvane
