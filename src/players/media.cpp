// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/media.h"

#include <utility>

namespace corvane {

namespace {

using mdlDefinePublic::mkCDTrack;
using mdlDefinePublic::mkImage;
using mdlDefinePublic::mkMciFile;
using mdlDefinePublic::mkMovie;

struct Row {
    std::int16_t kind;
    std::shared_ptr<OpenMedium> (*make)(Player& player, MediaType type);
};

/// One row a kind of media.
constexpr Row kMedia[] = {
    {mkImage, makePicture},
    {mkMovie, makeMovie},
    {mkMciFile, makeSound},
    {mkCDTrack, makeDiscTrack},
};

}  // namespace

void registerMedia(Player& player) {
    for (const Row& row : kMedia) {
        player.media.registerMedium(
            row.kind, [&player, make = row.make](MediaType type) { return make(player, std::move(type)); });
    }
}

}  // namespace corvane
