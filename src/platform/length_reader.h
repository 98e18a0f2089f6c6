// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace corvane {

/// Reads how long files play. All calls are made on the user-interface thread.
class LengthReader {
public:
    /// Milliseconds; empty: it is not known, because the file cannot be read, says nothing certain, or took too long.
    using Done = std::function<void(std::optional<std::int64_t>)>;

    virtual ~LengthReader() = default;
    /// Reads in a worker, in bounded time and memory, and returns at once; kind: mkMovie or mkMciFile. `done` is called
    /// in a posted event of its own, once; never once it was given up. Called again only when that has come, or behind
    /// giveUp().
    virtual void read(const std::string& path, std::int16_t kind, Done done) = 0;
    /// What is being read is not wanted any more.
    virtual void giveUp() = 0;
};

}  // namespace corvane
