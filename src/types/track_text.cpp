// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/track_text.h"

#include "types/tag_text.h"

namespace corvane {

namespace {

std::string chosenText(const char* what, const std::vector<TrackName>& tracks, std::size_t chosen) {
    const std::string title = tagText(tracks[chosen].title);
    const std::string language = tagText(tracks[chosen].language);
    std::string text = std::string(what) + " " + std::to_string(chosen + 1) + " of " + std::to_string(tracks.size());
    if (!title.empty()) text += ": " + title;
    if (!language.empty()) text += title.empty() ? ": " + language : " (" + language + ")";
    return text;
}

}  // namespace

std::optional<std::size_t> trackBehind(std::size_t tracks, std::optional<std::size_t> present, bool noneIsAChoice) {
    if (tracks == 0) return std::nullopt;
    if (!present) return 0;
    const std::size_t next = *present + 1;
    if (next < tracks) return next;
    return noneIsAChoice ? std::nullopt : std::optional<std::size_t>(0);
}

std::string subtitlesText(const std::vector<TrackName>& tracks, std::optional<std::size_t> chosen) {
    if (tracks.empty()) return "No subtitles";
    return chosen ? chosenText("Subtitles", tracks, *chosen) : "Subtitles off";
}

std::string soundsText(const std::vector<TrackName>& tracks, std::optional<std::size_t> chosen) {
    if (tracks.empty() || !chosen) return "No sound";
    return tracks.size() == 1 ? "No other sound" : chosenText("Sound", tracks, *chosen);
}

}  // namespace corvane
