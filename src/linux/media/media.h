// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/ports.h"

namespace corvane {

/// The media controls of this desktop. The loop and the windows (for the screen's size) outlive it.
std::unique_ptr<Media> makeMedia(EventLoop& loop, Windows& windows);

/// Output volume by the sound server; without one every reading is empty and nothing else happens.
std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop);

}  // namespace corvane
