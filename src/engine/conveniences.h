// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

/// What people expect of a player of today, each beside the way that holds without it, never in its place: a plain
/// start has none, a start from the desktop all, and the settings file says otherwise for each. A rule asks for its own
/// where it decides.
struct Conveniences {
    bool names = false;      ///< a file's kind is what follows the last dot of its own name, its title what is before
    bool kinds = false;      ///< today's types of sounds, movies and pictures, where they can be decoded
    bool texts = false;      ///< title and artist by the file's tags
    bool loudness = false;   ///< gains by tags are obeyed, and what encoders added at the seams is cut
    bool lists = false;      ///< lists of other players, and folders, are what is in them
    bool longLists = false;  ///< more entries than kMaxFiles
    bool plays = false;      ///< what is dropped plays at once
    bool find = false;       ///< a window that finds an entry of the list
    bool hands = false;      ///< today's ways of the mouse and the keys on slider, volume, time and media windows
    bool resume = false;     ///< what played goes on at the next start

    bool operator==(const Conveniences&) const = default;
};

inline constexpr Conveniences kAllConveniences{true, true, true, true, true, true, true, true, true, true};

}  // namespace corvane
