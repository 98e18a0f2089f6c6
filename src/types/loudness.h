// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

namespace corvane {

/// What the tags of a sound say of how loud it is. Empty: nothing, or what makes no sense.
struct LoudnessTags {
    struct Level {
        std::optional<double> gain;  ///< decibels
        std::optional<double> peak;  ///< the highest sample; 1 is full scale
        std::optional<double> r128;  ///< decibels, towards a level that lies 5 below that of gain
    };
    Level track, album;
};

/// Takes one tag, by its name (letters without case): REPLAYGAIN_TRACK_GAIN, REPLAYGAIN_TRACK_PEAK, R128_TRACK_GAIN,
/// and the same of ALBUM. Others are passed over.
void takeLoudnessTag(LoudnessTags& tags, std::string_view name, std::string_view value);

/// By what the samples are multiplied; 1 where nothing is said. Of the album, or the track where that says nothing, and
/// the other way round. Never so much that the stated peak passes full scale; without a stated peak never above 1.
float loudnessFactor(const LoudnessTags& tags, bool ofAlbum);

}  // namespace corvane
