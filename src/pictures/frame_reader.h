// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "pictures/picture_pixels.h"

namespace corvane {

/// What moves is whole in memory four times over: as it is painted, as it comes next, as it is put together, and what
/// comes back when a part of it goes. One with more pixels stands still, as does a file with more bytes.
inline constexpr std::int64_t kMostMovingPixels = 4'000'000;
inline constexpr std::int64_t kMostMovingBytes = std::int64_t{32} << 20;
/// Hundredths of a second up to which a frame's time is none that was meant: it gets kUsualFrameMs, as browsers do.
inline constexpr int kNoTime = 1;
inline constexpr int kUsualFrameMs = 100;

/// One of the pictures of a file as it is seen: all of them before it lie beneath.
struct FramePixels {
    PicturePixels pixels;
    int milliseconds = 0;
    bool isLast = false;  ///< no further one comes
};

/// The pictures of a file that holds several, one after the other and as often as the file asks for. Made and asked by
/// one thread at a time.
class FrameReader {
public:
    FrameReader() = default;
    FrameReader(const FrameReader&) = delete;
    FrameReader& operator=(const FrameReader&) = delete;
    virtual ~FrameReader() = default;
    /// Empty: there is none any more, the file holds a single one, or it takes too much. givenUp: true, and nobody
    /// wants it.
    virtual std::optional<FramePixels> next(const std::function<bool()>& givenUp) = 0;
};

inline int frameMilliseconds(int hundredths) { return hundredths <= kNoTime ? kUsualFrameMs : hundredths * 10; }

}  // namespace corvane
