// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace corvane {

/// What decoding a JPEG takes beside its picture, bytes: the coefficients of the whole picture where it comes in
/// several scans (progressive ones do); next to nothing otherwise.
std::int64_t decoderBytesOfJpeg(const std::string& path);

}  // namespace corvane
