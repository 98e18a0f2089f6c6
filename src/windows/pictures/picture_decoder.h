// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/ports.h"

namespace corvane {

/// Decodes a picture file in this thread. givenUp is asked often; true: the result is dropped.
Pictures::Decoded decodePicture(const std::string& path, const std::function<bool()>& givenUp);

/// Pixels that all living decoded pictures hold; any thread.
std::int64_t heldPicturePixels();

}  // namespace corvane
