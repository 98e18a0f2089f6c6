// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// What a coder tells of a sound, in samples: what it put before and behind it, and how long it is.
struct CoderEnds {
    std::int64_t before = 0, behind = 0;
    std::int64_t samples = 0;  ///< at least 1
};

/// Reads the tag "iTunSMPB": hexadecimal numbers with blanks between, of which the second to the fourth count. Empty:
/// another tag, or one that makes no sense.
std::optional<CoderEnds> coderEndsOf(std::string_view name, std::string_view value);

}  // namespace corvane
