// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "media/movies/graphics_choice.h"
#include "platform/ports.h"

namespace corvane {

/// The media of this desktop.
class LinuxMedia : public Media {
public:
    /// Whether movies are shown by the graphics driver; before the first one.
    virtual void chooseGraphics(GraphicsChoice choice) = 0;
};

/// The media controls of this desktop. The loop and the windows (for the screen's size) outlive it. programFolder:
/// where frames of movies go when the user keeps no pictures.
std::unique_ptr<LinuxMedia> makeMedia(EventLoop& loop, Windows& windows, const std::string& programFolder);

/// Output volume by the sound server; without one every reading is empty and nothing else happens.
std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop);

}  // namespace corvane
