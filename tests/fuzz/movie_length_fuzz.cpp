// SPDX-License-Identifier: GPL-3.0-or-later
// The length of a movie, counted from its packets by the demuxers that the player uses.
#include <atomic>
#include <cmath>

#include "media/movies/movie_duration.h"
#include "memory_file.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using corvane::fuzz::require;
    const corvane::fuzz::MemoryFile file(data, size);
    const std::atomic<bool> no{false}, yes{true};
    const auto length = corvane::countedLength(file.path(), no);
    require(!length || (std::isfinite(*length) && *length > 0), "a length is a time, or there is none");
    require(!corvane::countedLength(file.path(), yes), "who no longer waits gets nothing");
    return 0;
}
