// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <stop_token>
#include <string>

namespace corvane {

/// Whether a file of this format (the demuxer's name) says nothing of its length, so that players guess it from the
/// bit rate: bare streams without a container.
bool lengthIsGuessed(const std::string& format);

/// The true length of a local file in seconds, counted from its packets; empty when it cannot be read or `stop` was
/// asked for. Reads the whole file: call it in a worker.
std::optional<double> countedLength(const std::string& path, std::stop_token stop);

}  // namespace corvane
