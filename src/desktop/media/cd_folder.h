// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

/// A disc shows as a folder of stubs, TrackNN.cda, one for each audio track. The folders lie in the user's runtime
/// folder; their paths bear no dot, and a text file beside the stubs names the disc's place. They are made again when
/// they are gone, under the same path, so that a list kept from an earlier session still finds its tracks.

/// The drives of the machine, and the disc of CORVANE_CDROM (a device or an image) before them. Makes their folders. A
/// drive that does not answer is left out.
std::vector<Drive> discDrives();

/// Makes the folder for a device or an image, or brings it up to date; returns its path. Without a disc the folder is
/// empty. "" when it cannot be made.
std::string makeDiscFolder(const std::string& place);

/// Whether the path leads into a disc's folder; asks no drive.
bool isDiscPath(const std::string& path);

/// To be called before a path is looked up or listed: brings a disc's folder up to date when the path leads into one;
/// cheap for every other path.
void refreshDiscPath(const std::string& path);

/// The disc that an entry stands for: the image that the path names or that lies in its folder, else the disc of its
/// folder, else CORVANE_CDROM, else the first drive. "" when there is none.
std::string discPlace(const std::string& entry);

}  // namespace corvane
