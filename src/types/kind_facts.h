// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "types/media_types.h"

namespace corvane {

// What is known of a kind of media without opening a file of it. All else its medium says.

/// Shown still, by the port Pictures; without a length, without texts of its own.
constexpr bool isPicture(std::int16_t kind) { return kind == mdlDefinePublic::mkImage; }
/// Seen and heard, by the movie control.
constexpr bool isMovie(std::int16_t kind) { return kind == mdlDefinePublic::mkMovie; }
/// A file that is heard alone.
constexpr bool isSoundFile(std::int16_t kind) { return kind == mdlDefinePublic::mkMciFile; }
/// The file itself says how long it plays: the editor tells it, and a long one goes on where it was left. A disc's
/// drive is not made to turn for that.
constexpr bool hasLength(std::int16_t kind) { return isMovie(kind) || isSoundFile(kind); }

}  // namespace corvane
