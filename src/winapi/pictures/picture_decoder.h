// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "pictures/frame_reader.h"
#include "platform/ports.h"

namespace corvane {

/// Decodes a picture file in this thread. givenUp is asked often; true: the result is dropped.
Pictures::Decoded decodePicture(const std::string& path, const std::function<bool()>& givenUp);

/// What moves in a file; null: nothing. In this thread, as decodePicture.
std::unique_ptr<FrameReader> openFrames(const std::string& path, const std::function<bool()>& givenUp);
/// A decoded picture of this desktop.
Picture pictureOf(PicturePixels decoded);

/// Pixels that all living decoded pictures hold; any thread.
std::int64_t heldPicturePixels();

}  // namespace corvane
