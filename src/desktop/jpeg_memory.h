// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

class QIODevice;

namespace corvane {

/// What decoding a JPEG takes beside its picture, bytes: the coefficients of the whole picture where it comes in
/// several scans (progressive ones do); next to nothing otherwise. The file is read from its beginning and left at any
/// place.
std::int64_t decoderBytesOfJpeg(QIODevice& file);

}  // namespace corvane
