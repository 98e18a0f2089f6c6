// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_track.h"

#include <mpv/client.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "types/tag_text.h"

namespace corvane {

namespace {

const mpv_node* entry(const mpv_node& map, std::string_view key) {
    if (map.format != MPV_FORMAT_NODE_MAP) return nullptr;
    for (int i = 0; i < map.u.list->num; ++i) {
        if (key == map.u.list->keys[i]) return &map.u.list->values[i];
    }
    return nullptr;
}

std::string textOf(const mpv_node& map, std::string_view key) {
    const mpv_node* const node = entry(map, key);
    return node != nullptr && node->format == MPV_FORMAT_STRING ? node->u.string : "";
}

std::int64_t numberOf(const mpv_node& map, std::string_view key) {
    const mpv_node* const node = entry(map, key);
    return node != nullptr && node->format == MPV_FORMAT_INT64 ? node->u.int64 : 0;
}

bool flagOf(const mpv_node& map, std::string_view key) {
    const mpv_node* const node = entry(map, key);
    return node != nullptr && node->format == MPV_FORMAT_FLAG && node->u.flag != 0;
}

bool arePictures(std::string_view codec) {
    static constexpr std::array<std::string_view, 4> kPictures{"hdmv_pgs_subtitle", "dvd_subtitle", "dvb_subtitle",
                                                               "xsub"};
    return std::find(kPictures.begin(), kPictures.end(), codec) != kPictures.end();
}

std::optional<MovieTrack::Kind> kindOf(const mpv_node& track) {
    const std::string type = textOf(track, "type");
    if (type == "video") return MovieTrack::Kind::Picture;
    if (type == "audio") return MovieTrack::Kind::Sound;
    if (type == "sub") return MovieTrack::Kind::Subtitles;
    return std::nullopt;
}

}  // namespace

std::vector<MovieTrack> tracksOf(const mpv_node& list) {
    std::vector<MovieTrack> tracks;
    if (list.format != MPV_FORMAT_NODE_ARRAY) return tracks;
    for (int i = 0; i < std::min(list.u.list->num, kMostMovieTracks); ++i) {
        const mpv_node& node = list.u.list->values[i];
        const auto kind = kindOf(node);
        if (!kind) continue;
        tracks.push_back({*kind, numberOf(node, "id"), textOf(node, "title"), textOf(node, "lang"),
                          flagOf(node, "selected"), flagOf(node, "albumart"), arePictures(textOf(node, "codec")),
                          static_cast<int>(numberOf(node, "demux-rotation") % 360)});
    }
    return tracks;
}

std::vector<MovieChapter> chaptersOf(const mpv_node& list) {
    std::vector<MovieChapter> chapters;
    if (list.format != MPV_FORMAT_NODE_ARRAY) return chapters;
    for (int i = 0; i < std::min(list.u.list->num, kMostMovieChapters); ++i) {
        const mpv_node& node = list.u.list->values[i];
        const mpv_node* const time = entry(node, "time");
        if (time == nullptr || time->format != MPV_FORMAT_DOUBLE || !std::isfinite(time->u.double_)) continue;
        chapters.push_back({std::max(time->u.double_, 0.0), tagText(textOf(node, "title"))});
    }
    std::stable_sort(chapters.begin(), chapters.end(),
                     [](const MovieChapter& a, const MovieChapter& b) { return a.seconds < b.seconds; });
    return chapters;
}

std::optional<FilmLight> lightOf(const mpv_node& params) {
    const std::string transfer = textOf(params, "gamma");
    if (transfer != "pq" && transfer != "hlg") return std::nullopt;
    const mpv_node* const peak = entry(params, "sig-peak");
    return FilmLight{transfer == "pq" ? FilmLight::Transfer::Pq : FilmLight::Transfer::Hlg,
                     peak != nullptr && peak->format == MPV_FORMAT_DOUBLE ? peak->u.double_ : 0,
                     textOf(params, "primaries") == "bt.2020"};
}

int pictureTurn(const std::vector<MovieTrack>& tracks) {
    const auto picture = std::find_if(tracks.begin(), tracks.end(), [](const MovieTrack& track) {
        return track.kind == MovieTrack::Kind::Picture && !track.isCover;
    });
    const int turned = picture == tracks.end() ? 0 : picture->turned;
    return turned == 90 || turned == 180 || turned == 270 ? turned : 0;
}

std::string turningFilter(int turn) {
    switch (turn) {
        case 90:
            return "lavfi=[transpose=clock]";
        case 180:
            return "lavfi=[hflip,vflip]";
        case 270:
            return "lavfi=[transpose=cclock]";
        default:
            return "";
    }
}

}  // namespace corvane
