// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "drives/drive_file.h"

namespace corvane {

/// Why the synthesizer's library must not be given this soundfont, in words; empty: it may be. The library believes
/// what a font says of itself, and keeps all of its sounds unpacked: here they are counted first, and how many of them
/// one note may begin. Waits for the drive, and reads what is packed once.
std::string tooMuchInSoundFont(DriveFile& file);

}  // namespace corvane
