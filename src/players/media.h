// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "engine/player.h"

/// What makes the media, a row of the table in media.cpp each. Each is one file of the name behind "make".
namespace corvane {

std::shared_ptr<OpenMedium> makeSound(Player& player, MediaType type);
std::shared_ptr<OpenMedium> makeDiscTrack(Player& player, MediaType type);
std::shared_ptr<OpenMedium> makeMovie(Player& player, MediaType type);
std::shared_ptr<OpenMedium> makePicture(Player& player, MediaType type);

/// Registers them with the player.
void registerMedia(Player& player);

}  // namespace corvane
