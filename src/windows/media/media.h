// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/ports.h"
#include "windows/windows_loop.h"

namespace corvane {

/// The media controls of this desktop: MCI for sound, MIDI and discs, the filter graph for movies. The loop and the
/// windows (for the screen's size) outlive it.
std::unique_ptr<Media> makeMedia(WindowsLoop& loop, Windows& windows);

/// Still pictures by the system's decoders. Each picture is a BitmapPicture.
std::unique_ptr<Pictures> makePictures();

/// Output volume by waveOut* and aux*.
std::unique_ptr<SoundDevices> makeSoundDevices();

}  // namespace corvane
