// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/ports.h"

namespace corvane {

/// The media controls of this desktop.
class DesktopMedia : public Media {
public:
    /// This file will be opened in a moment: what it needs is loaded in threads meanwhile. Pictures need nothing.
    virtual void expect(const std::string& path) = 0;
};

/// The loop and the windows (for the screen's size) outlive it.
std::unique_ptr<DesktopMedia> makeMedia(EventLoop& loop, Windows& windows);

/// Output volume by the sound server; without one every reading is empty and nothing else happens.
std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop);

}  // namespace corvane
