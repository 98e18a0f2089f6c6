// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "media/movies/graphics_choice.h"

namespace corvane {

/// What is in force and what is missing on this machine, line by line on the output: folder, skins, what the kernel
/// refuses, sound server, CD drive, sounds for MIDI, fonts, what draws movies, libraries. It gives up for itself what
/// the player gives up. Needs no display, makes no folder, and waits for nobody longer than some seconds. version: the
/// program's name and version. choiceIn: how movies are to be drawn by the settings in that folder; it may wait for the
/// drive. Never returns: the program ends with 0, or with 1 when the output cannot be written.
[[noreturn]] void tellAbout(const std::string& version,
                            const std::function<GraphicsChoice(const std::string& folder)>& choiceIn);

}  // namespace corvane
