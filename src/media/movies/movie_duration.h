// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

namespace corvane {

/// Whether a file of this format (the demuxer's name) and size says nothing certain of its length: bare streams, whose
/// length players guess from the bit rate, and program streams that are short enough to be counted in no time; a
/// program stream's guess falls short by some frames only.
bool lengthIsGuessed(const std::string& format, std::uintmax_t bytes);

/// The true length of a local file in seconds, counted from its packets; empty when it cannot be read or `stop` was
/// asked for. Reads the whole file: call it in a worker.
std::optional<double> countedLength(const std::string& path, const std::atomic<bool>& stop);

/// The length of a local movie file in seconds as the file states it, counted where that would be a guess and the file
/// is short; empty when it cannot be read, states none, or `stop` was asked for. Call it in a worker.
std::optional<double> statedLength(const std::string& path, const std::atomic<bool>& stop);

}  // namespace corvane
