// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace corvane {

/// Whether what begins like a frame of MPEG sound (layer I to III) is one: its length leads to another of the same
/// kind, or to the end, here or a little later. A crowd of headers that lead nowhere keeps some of the system's
/// decoders looking for good. True for what begins otherwise. start: the first 64 KiB, fewer where the file ends.
bool leadsToFrames(std::string_view start);

}  // namespace corvane
