// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "pictures/frame_reader.h"

namespace corvane {

/// The pictures of a GIF file with these bytes. What none of them covers looks as it does around the first one
/// (readGif).
std::unique_ptr<FrameReader> gifFrames(std::string bytes);

}  // namespace corvane
