// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace corvane {

/// The name, without its ending, of a file with a frame of a movie: the title and the frame's time, "Title
/// 00.01.23.456". It is one plain name everywhere: without separators, control characters and what Windows refuses in
/// names, with no dot in front, and no longer than names may be.
std::string frameName(const std::string& title, std::int64_t us);

}  // namespace corvane
