// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/level_choice.h"

#include <algorithm>
#include <string_view>

#include "engine/player.h"
#include "types/text.h"

namespace corvane {

namespace {

std::string_view folderOf(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    return path.substr(0, slash == std::string_view::npos ? 0 : slash);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The digits at the front, without leading zeros.
std::string_view takeDigits(std::string_view& text) {
    while (text.size() > 1 && text.front() == '0' && isDigit(text[1])) text.remove_prefix(1);
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[count])) ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

/// Whether one name comes before the other where numbers count as numbers and capitals as their letters.
bool namedBefore(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            const std::string_view first = takeDigits(a), second = takeDigits(b);
            if (first.size() != second.size()) return first.size() < second.size();
            if (first != second) return first < second;
            continue;
        }
        const auto first = static_cast<unsigned char>(text::lower(a.front()));
        const auto second = static_cast<unsigned char>(text::lower(b.front()));
        if (first != second) return first < second;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return a.empty() && !b.empty();
}

bool follows(const Player& player, const std::string& first, const std::string& second) {
    const FileTexts* const a = player.texts.find(first);
    const FileTexts* const b = player.texts.find(second);
    if (a != nullptr && b != nullptr && !a->album.empty() && a->album == b->album && a->track > 0 &&
        b->track == a->track + 1)
        return true;
    return namedBefore(first, second);
}

bool isInAlbum(const Player& player, std::size_t at) {
    const auto count = static_cast<std::size_t>(std::max<int>(player.gFileCount, 0));
    if (player.shuffled || at >= count) return false;
    const std::string& path = player.gFilePath[at];
    const auto isNeighbour = [&](std::size_t other) { return folderOf(player.gFilePath[other]) == folderOf(path); };
    const bool before = at > 0 && isNeighbour(at - 1);
    const bool behind = at + 1 < count && isNeighbour(at + 1);
    if (before && !follows(player, player.gFilePath[at - 1], path)) return false;
    if (behind && !follows(player, path, player.gFilePath[at + 1])) return false;
    return before || behind;
}

}  // namespace

SoundLevel soundLevelOf(const Player& player, const std::string& path) {
    if (!player.conveniences.loudness) return SoundLevel::AsRecorded;
    const auto present = static_cast<std::size_t>(std::max<int>(player.gFileIndex, 0));
    for (const std::size_t at : {present, present + 1, std::size_t{0}}) {
        if (player.gFilePath[at] == path) return isInAlbum(player, at) ? SoundLevel::OfAlbum : SoundLevel::OfTrack;
    }
    return SoundLevel::OfTrack;
}

}  // namespace corvane
