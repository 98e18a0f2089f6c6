// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/ports.h"
#include "winapi/program/windows_loop.h"

namespace corvane {

/// The media controls of this desktop: MCI for sound, MIDI and discs, the filter graph for movies. The loop and the
/// windows (for the screen's size) outlive it.
std::unique_ptr<Media> makeMedia(WindowsLoop& loop, Windows& windows);

/// Still pictures by readers of our own and the system's decoders. Each picture is a BitmapPicture. post: to the loop;
/// stopped before that goes.
std::unique_ptr<Pictures> makePictures(const UiPost& post);

/// Output volume by waveOut* and aux*. The loop outlives it.
std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop);

}  // namespace corvane
