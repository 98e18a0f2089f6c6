// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

/// A disc shows as a folder with a file for each of its audio tracks, TrackNN.cda. Neither is in the file system: what
/// is asked about them is answered from here, and nothing is written anywhere. Their paths bear no dot and are the same
/// for the same drive or image in every session, so that a kept list still finds its tracks. Any thread.

/// The drives of the machine, and the disc of CORVANE_CDROM (a device or an image) before them, with or without a disc.
std::vector<Drive> discDrives();

/// The folder of a device or an image, whether there is one or not.
std::string discFolder(const std::string& place);

/// Whether the path is a disc's folder or leads into one; asks no drive.
bool isDiscPath(const std::string& path);

/// The tracks of a disc's folder in the disc's order; none without a disc. Empty when no drive and no image has that
/// folder. Waits for a drive.
std::optional<std::vector<std::string>> discTracks(const std::string& folder);

/// Whether the path is a track of a disc that is there now. Waits for a drive.
bool isDiscTrack(const std::string& path);

/// The sheet of which the path names a track, as if the sheet were a folder ("DISC.cue/Track01.cda"); "" when it does
/// not look like that. Asks nobody.
std::string sheetOfTrack(const std::string& path);

/// Whether the sheet is there and has that track. Waits for a drive.
bool isSheetTrack(const std::string& path);

/// The disc that an entry stands for: the disc of its folder, or the image that the path names or that lies in its
/// folder; else CORVANE_CDROM, else the first drive. "" when there is none.
std::string discPlace(const std::string& entry);

}  // namespace corvane
