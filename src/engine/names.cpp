// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "engine/mdlPublicFunction.h"
#include "types/kind_facts.h"
#include "types/text.h"

namespace corvane::mdlPublicFunction {

std::string GetExtension(std::string_view path) {
    const std::size_t dot = path.find('.');
    return text::capitals(dot == std::string_view::npos ? path : path.substr(dot + 1));
}

std::string GetBaseName(std::string_view path) { return std::string(path.substr(0, path.find('.'))); }

namespace {

/// Place of the dot before the type of a file; npos: it has none.
std::size_t typeDot(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
    const std::size_t dot = path.rfind('.');
    return dot == std::string_view::npos || dot <= name ? std::string_view::npos : dot;
}

/// A track of a disc's sheet, which is named as if the sheet were a folder: that name is not one of the stated way.
bool isInSheet(const Conveniences& ways, std::string_view path) {
    constexpr std::string_view kSheet = ".cue";
    const std::size_t slash = path.find_last_of("/\\");
    if (!ways.lists || slash == std::string_view::npos || slash <= kSheet.size()) return false;
    return text::sameWithoutCase(path.substr(slash - kSheet.size(), kSheet.size()), kSheet);
}

}  // namespace

std::string typeOf(const Conveniences& ways, std::string_view path) {
    if (!ways.names && !isInSheet(ways, path)) return GetExtension(path);
    const std::size_t dot = typeDot(path);
    return dot == std::string_view::npos ? std::string() : text::capitals(path.substr(dot + 1));
}

std::string titleOf(const Conveniences& ways, std::string_view name) {
    return ways.names || isInSheet(ways, name) ? std::string(name.substr(0, typeDot(name))) : GetBaseName(name);
}

void addTypesOfToday(Player& player) {
    player.types.addWhereThere(typesOfToday(), [&player](const MediaType& type) {
        return isPicture(type.kind) ? player.ports.pictures.shows(type.extension)
                                    : player.ports.media.plays(type.extension);
    });
}

bool isPlayed(const Player& player, std::string_view path) {
    return player.types.knows(typeOf(player.conveniences, path));
}

std::string withoutDoubledSeparator(std::string path, char separator) {
    if (path.find(std::string(2, separator)) == 2) path.erase(2, 1);
    return path;
}

}  // namespace corvane::mdlPublicFunction
