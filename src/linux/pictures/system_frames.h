// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "pictures/frame_reader.h"

namespace corvane {

/// The pictures of a WEBP file with these bytes that moves, by the system's decoder. Null: it does not move, or it is
/// none. The decoder cannot be asked to stop within a picture.
std::unique_ptr<FrameReader> systemFrames(const std::string& bytes);

}  // namespace corvane
