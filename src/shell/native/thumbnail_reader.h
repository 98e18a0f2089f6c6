// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "forms/picture.h"

namespace corvane {

inline constexpr int kThumbnailSide = 96;  ///< pixels that a small picture has across or down at most

/// Reads pictures small. All calls are made on the user-interface thread.
class ThumbnailReader {
public:
    /// None: the file cannot be read, is no picture, costs too much or took too long.
    using Done = std::function<void(Picture)>;

    virtual ~ThumbnailReader() = default;
    /// Reads in a worker, in bounded time and memory, and returns at once. `done` is called in a posted event of its
    /// own, once; never once it was given up. Called again only when that has come, or behind giveUp().
    virtual void read(const std::string& path, Done done) = 0;
    /// What is being read is not wanted any more.
    virtual void giveUp() = 0;
};

}  // namespace corvane
