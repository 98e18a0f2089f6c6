// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace corvane {

/// Bytes of a file from a place on, fewer where it ends.
using ReadAt = std::function<std::string(std::uint64_t place, std::size_t count)>;

/// Why a sound is not handed to the system. Samples (WAV, RF64, AIFF, AU): it says that it has as many channels, such a
/// rate or such samples as no sound has, and the system's players would reckon with them for good. Frames (MP1 to MP3):
/// they lead nowhere. Empty: it can be tried, as can every other file. Reads some hundred small pieces at most, and one
/// of 64 KiB; asks nothing of the system.
std::string refusalOfSamples(const ReadAt& bytesAt);

}  // namespace corvane
