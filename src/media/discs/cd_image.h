// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "media/discs/cd_disc.h"

namespace corvane {

/// Images of discs: a sheet (.cue) and the files of its folder that it names. They are read by our own reader, sounds
/// among them by the libraries that play sound files. To be called in workers: a drive is waited for.

/// Whether a path names an image by its ending: a sheet, or a raw file (.bin), whose sheet then lies beside it.
bool isDiscImage(const std::string& path);

/// Measures the sounds that the sheet names, which may take long; comes back early once the flag was set, which the
/// disc keeps for what it reads later.
OpenedDisc openImage(const std::string& path, const Abandoned& flag = std::make_shared<std::atomic<bool>>(false));

/// Numbers of an image's audio tracks, found without a look into its sounds; none: there is no disc.
std::vector<int> audioTracksOfImage(const std::string& path);

/// What the sheet of an image says of one of its tracks, in the bytes that it has; "": nothing.
struct TrackTexts {
    std::string title, performer;
    std::string album;  ///< the disc's title
};
TrackTexts textsOfImage(const std::string& path, int track);

}  // namespace corvane
