// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {

inline constexpr std::int64_t kMostDrawingBytes = std::int64_t{8} << 20U;
inline constexpr std::int64_t kMostDrawingTags = 200'000;  ///< each takes some hundred bytes where it is drawn

/// A drawing (SVG) that leads nowhere: whatever it names beside itself (other files, itself as a file, pictures that
/// are not PNG, JPEG or GIF in its own text) is blanked out, in place. Whoever draws would read those without a bound,
/// and never come back from a drawing that names itself. Empty: it cannot be looked through (too long, compressed, in
/// another encoding than one that holds ASCII, with declarations that put text together), and is not to be drawn.
std::optional<std::string> loneDrawing(std::string bytes);

}  // namespace corvane
