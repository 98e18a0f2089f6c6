// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_tracks.h"

#include <array>
#include <utility>

#include "media/movies/movie_library.h"
#include "types/track_text.h"

namespace corvane {

namespace {

constexpr std::uint64_t kList = MovieTracks::kFirstTag, kAdded = kList + 1, kSet = kList + 2, kText = kList + 3;
constexpr std::size_t kMostWanted = 8;  // presses that wait for an answer

}  // namespace

MovieTracks::MovieTracks(mpv_handle* player, MovieSource& source, const UiPost& post, std::function<void()> chosen)
    : player_(player), source_(source), post_(post), chosen_(std::move(chosen)) {
    movieLibrary().mpv_observe_property(player_, kText << 32U, "sub-text", MPV_FORMAT_STRING);
}

void MovieTracks::begin(const std::string& path) { path_ = path; }

void MovieTracks::end() {
    ++number_;
    path_.clear();
    refused_.clear();
    wanted_.clear();
    looker_.giveUp();
    looked_ = false;
    adding_ = 0;
    if (std::exchange(subtitled_, false)) set("sid", "no");
    show("");
    if (std::exchange(soundChosen_, false)) set("aid", "auto");
}

void MovieTracks::chooseNext(MovieTrack::Kind kind) {
    if (path_.empty() || wanted_.size() >= kMostWanted) return;
    wanted_.push_back(kind);
    if (wanted_.size() == 1) goOn();
}

void MovieTracks::goOn() {
    if (wanted_.empty()) return;
    if (wanted_.front() == MovieTrack::Kind::Subtitles && !looked_) {
        lookBeside();
    } else {
        ask();
    }
}

void MovieTracks::lookBeside() {
    looked_ = true;
    const auto tell = [this, post = post_, number = number_](std::vector<SubtitleFile> files) {
        post([this, number, files = std::move(files)] {
            if (number == number_) add(files);
        });
    };
    const auto look = [tell, path = path_](const Worker::GiveUp& givenUp) { tell(subtitlesBeside(path, givenUp)); };
    if (!looker_.start(look, [tell] { tell({}); })) ask();
}

void MovieTracks::add(const std::vector<SubtitleFile>& files) {
    for (const SubtitleFile& file : files) {
        if (!file.reason.empty()) {
            refused_ = file.name + " " + file.reason;
            continue;
        }
        const std::string address = source_.lend(file.name, file.bytes);
        std::array<const char*, 5> words{"sub-add", address.c_str(), "auto", file.name.c_str(), nullptr};
        if (movieLibrary().mpv_command_async(player_, tagged(kAdded), words.data()) >= 0) ++adding_;
    }
    if (adding_ == 0) ask();
}

void MovieTracks::ask() {
    movieLibrary().mpv_get_property_async(player_, tagged(kList), "track-list", MPV_FORMAT_NODE);
}

bool MovieTracks::handle(const mpv_event& event) {
    if (event.event_id == MPV_EVENT_PROPERTY_CHANGE && event.reply_userdata == kText << 32U) {
        const auto& property = *static_cast<const mpv_event_property*>(event.data);
        show(property.data == nullptr ? "" : *static_cast<const char* const*>(property.data));
        return true;
    }
    const bool answers = event.event_id == MPV_EVENT_COMMAND_REPLY || event.event_id == MPV_EVENT_GET_PROPERTY_REPLY ||
                         event.event_id == MPV_EVENT_SET_PROPERTY_REPLY;
    const std::uint64_t tag = event.reply_userdata >> 32U;
    if (!answers || tag < kFirstTag || tag > kSet) return false;
    if (static_cast<std::uint32_t>(event.reply_userdata) != number_) return true;
    if (tag == kAdded) {
        if (event.error < 0) refused_ = "The file of subtitles beside the movie cannot be shown";
        if (--adding_ == 0) ask();
    } else if (tag == kList) {
        const void* const data = event.error < 0 ? nullptr : static_cast<const mpv_event_property*>(event.data)->data;
        choose(data == nullptr ? std::vector<MovieTrack>() : tracksOf(*static_cast<const mpv_node*>(data)));
    }
    return true;
}

void MovieTracks::choose(const std::vector<MovieTrack>& all) {
    if (wanted_.empty()) return;
    const MovieTrack::Kind kind = wanted_.front();
    const bool subtitles = kind == MovieTrack::Kind::Subtitles;
    std::vector<TrackName> names;
    std::vector<std::int64_t> ids;
    std::vector<bool> drawn;
    std::optional<std::size_t> present;
    for (const MovieTrack& track : all) {
        if (track.kind != kind) continue;
        if (track.isChosen) present = ids.size();
        names.push_back({track.title, track.language});
        ids.push_back(track.id);
        drawn.push_back(track.isDrawn);
    }
    const auto next = trackBehind(ids.size(), present, subtitles);
    if (next != present) set(subtitles ? "sid" : "aid", next ? std::to_string(ids[*next]) : "no");
    if (subtitles) set("sub-visibility", next && drawn[*next] ? "yes" : "no");
    if (subtitles && next) chosen_();
    (subtitles ? subtitled_ : soundChosen_) = subtitles ? next.has_value() : next != present || soundChosen_;
    if (subtitles && ids.empty() && !refused_.empty()) {
        say(refused_);
    } else {
        say(subtitles ? subtitlesText(names, next) : soundsText(names, next));
    }
    wanted_.erase(wanted_.begin());
    goOn();
}

void MovieTracks::leaveSubtitles(const std::string& why) {
    if (!std::exchange(subtitled_, false)) return;
    set("sid", "no");
    say(why);
}

void MovieTracks::show(const char* text) const {
    if (subtitles_) subtitles_(text);
}

void MovieTracks::set(const char* property, const std::string& value) {
    std::array<const char*, 4> words{"set", property, value.c_str(), nullptr};
    movieLibrary().mpv_command_async(player_, tagged(kSet), words.data());
}

void MovieTracks::say(const std::string& text) const {
    if (say_) say_(text);
}

}  // namespace corvane
