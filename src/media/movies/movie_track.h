// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "media/movies/tone_map.h"

#include "platform/movie_control.h"

struct mpv_node;

namespace corvane {

/// One of the tracks that the library has found in a movie, or was given beside it.
struct MovieTrack {
    enum class Kind { Picture, Sound, Subtitles };
    Kind kind = Kind::Picture;
    std::int64_t id = 0;    ///< the library's, among those of its kind
    std::string title;      ///< as the file has it; "" none
    std::string language;   ///< its code; "" none
    bool isChosen = false;  ///< it is shown or heard
    bool isCover = false;   ///< a still picture beside the sound
    bool isDrawn = false;   ///< subtitles that are pictures
    int turned = 0;         ///< degrees that the picture is to be turned by, clockwise
};

/// Further ones are as good as not there: lists have been made with a million.
inline constexpr int kMostMovieTracks = 200;

/// The library's property "track-list".
std::vector<MovieTrack> tracksOf(const mpv_node& list);

/// The library's property "chapter-list", in order; the first kMostMovieChapters, with harmless titles.
std::vector<MovieChapter> chaptersOf(const mpv_node& list);

/// How a film's light is meant, of the library's "video-params"; none where it is meant for ordinary screens.
std::optional<FilmLight> lightOf(const mpv_node& params);
inline constexpr int kMostMovieChapters = 2'000;

/// By how many degrees clockwise the picture is turned to be upright: 90, 180, 270; else 0.
int pictureTurn(const std::vector<MovieTrack>& tracks);
/// The library's filter that turns it so; "" for 0.
std::string turningFilter(int turn);

}  // namespace corvane
