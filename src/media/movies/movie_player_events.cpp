// SPDX-License-Identifier: GPL-3.0-or-later
// What the movie library tells of a player, and answers.
#include <algorithm>
#include <string_view>
#include <utility>

#include "media/movies/movie_facts.h"
#include "media/movies/movie_library.h"
#include "media/movies/movie_player.h"
#include "media/movies/movie_tags.h"
#include "media/movies/movie_track.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kMostDrawing{1'000};  ///< of a frame with subtitles, which others make
constexpr int kMostUnits = 1'000'000'000;

}  // namespace

void MoviePlayer::checkFrames() {
    if (stuck_ || frames().state() != MovieFrames::State::Lost) return;
    stuck_ = true;
    if (listener_.lost) listener_.lost();
}

void MoviePlayer::whole(TakePicture take) {
    whole_ = std::move(take);
    command(tagged(kWhole, number_), {"screenshot-raw", "video"});
}

void MoviePlayer::handleWhole(const mpv_event& event) {
    if (!whole_) return;
    const mpv_node none{};
    const mpv_node& result = event.error < 0 ? none : static_cast<const mpv_event_command*>(event.data)->result;
    PicturePixels picture = picture_.pixels() == 0 ? PicturePixels() : moviePicture(result);
    picture.full = picture_;
    std::exchange(whole_, {})(std::move(picture), turned_);
}

void MoviePlayer::pump() {
    woken_ = false;
    if (loadWaits_ && frames().state() == MovieFrames::State::Ready) sendLoad();
    checkFrames();
    const std::uint32_t before = number_;
    while (true) {
        const mpv_event* const event = movieLibrary().mpv_wait_event(library_->handle.get(), 0);
        if (event->event_id == MPV_EVENT_NONE) break;
        handle(*event);
    }
    const bool drawn = frames().update();
    if (frames().drawingTook() > kMostDrawing) tracks_->leaveSubtitles("These subtitles take too long to be drawn");
    if (drawn && before == number_ && !opening_ && listener_.frameReady) listener_.frameReady();
    frames().take();
}

void MoviePlayer::handle(const mpv_event& event) {
    if (frames().handle(event) || tracks_->handle(event)) return;
    switch (event.event_id) {
        case MPV_EVENT_START_FILE:
            started_ = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id;
            break;
        case MPV_EVENT_END_FILE: {
            const auto* const end = static_cast<const mpv_event_end_file*>(event.data);
            handleEnd(end->playlist_entry_id, end->reason == MPV_END_FILE_REASON_ERROR, end->error);
            break;
        }
        case MPV_EVENT_COMMAND_REPLY:
            handleReply(event);
            break;
        case MPV_EVENT_GET_PROPERTY_REPLY:
            if (event.reply_userdata >> 32 == kTracks) {
                handleTracks(event);
            } else {
                handleFact(event);
            }
            break;
        case MPV_EVENT_HOOK:
            hook_ = static_cast<const mpv_event_hook*>(event.data)->id;
            movieLibrary().mpv_get_property_async(library_->handle.get(), tagged(kTracks, 0), "track-list",
                                                  MPV_FORMAT_NODE);
            break;
        case MPV_EVENT_PROPERTY_CHANGE:
            handleProperty(*static_cast<const mpv_event_property*>(event.data));
            break;
        case MPV_EVENT_PLAYBACK_RESTART:
            handleRestart();
            break;
        default:
            break;
    }
}

void MoviePlayer::handleEnd(std::int64_t entry, bool failed, int error) {
    if (entry_ < 0 || entry != entry_) return;
    started_ = -1;
    if (failed || opening_) {
        const std::string unread = source().failure();
        const std::string unplayed = error < 0 ? movieError(error) : "Nothing in it can be played";
        tellFailed(unread.empty() ? unplayed : unread);
    } else {
        tellEnded();
    }
}

void MoviePlayer::handleReply(const mpv_event& event) {
    const auto tag = static_cast<MovieTag>(event.reply_userdata >> 32);
    if (tag == kTurned) return goOnToFirstFrame();  // the library waits, whichever file is wanted by now
    if (static_cast<std::uint32_t>(event.reply_userdata) != number_) return;
    if (tag == kWhole) return handleWhole(event);
    if (tag == kSeek) {
        const bool refused = event.error < 0;
        seek_ = refused ? Seek::None : Seek::Answered;
        if (refused) sendSeek();
        return;
    }
    if (tag != kLoad) return;
    if (event.error < 0) {
        tellFailed(movieError(event.error));
        return;
    }
    const mpv_node& result = static_cast<const mpv_event_command*>(event.data)->result;
    if (result.format != MPV_FORMAT_NODE_MAP) return;
    for (int i = 0; i < result.u.list->num; ++i) {
        if (std::string_view(result.u.list->keys[i]) == "playlist_entry_id") entry_ = result.u.list->values[i].u.int64;
    }
}

void MoviePlayer::handleProperty(const mpv_event_property& property) {
    const std::string_view name = property.name;
    if (name == "current-ao") {
        soundOutput_ = property.data == nullptr ? "" : *static_cast<const char* const*>(property.data);
        return;
    }
    if (!current() || property.data == nullptr) return;
    if (name == "time-pos") {
        time_ = *static_cast<const double*>(property.data);
        if (playing_ && seek_ == Seek::None && !waiting_) target_.reset();
    } else if (name == "duration") {
        // Guessed from the bit rate at first; it becomes better as the file is read.
        if (!opening_ && !counted_) duration_ = sensibleLength(*static_cast<const double*>(property.data));
    } else if (name == "eof-reached" && *static_cast<const int*>(property.data) != 0) {
        checkEnd();
    }
}

void MoviePlayer::handleRestart() {
    if (!current()) return;
    if (opening_) {
        learnFacts();
        return;
    }
    if (seek_ == Seek::Answered) {
        seek_ = Seek::None;
        sendSeek();
    }
    checkEnd();
}

/// The library has found the tracks and waits: from its first frame on the picture is upright.
void MoviePlayer::handleTracks(const mpv_event& event) {
    const void* const data = event.error < 0 ? nullptr : static_cast<const mpv_event_property*>(event.data)->data;
    const int turn = data == nullptr ? 0 : pictureTurn(tracksOf(*static_cast<const mpv_node*>(data)));
    if (turn == turned_) return goOnToFirstFrame();
    turned_ = turn;
    if (frames().isShown()) {
        // The driver turns as it draws; where the card decodes, no filter sees the picture.
        command(tagged(kTurned, 0), {"set", "video-rotate", turn == 0 ? "no" : "0"});
    } else {
        command(tagged(kTurned, 0), {"set", "vf", turningFilter(turn).c_str()});
    }
}

void MoviePlayer::goOnToFirstFrame() {
    if (hook_ != 0) movieLibrary().mpv_hook_continue(library_->handle.get(), std::exchange(hook_, 0));
}

/// Asks for what is known once the first picture stands; the answers come in this order.
void MoviePlayer::learnFacts() {
    mpv_handle* const handle = library_->handle.get();
    // What the driver turns has not been turned there.
    const bool lies = frames().isShown() && turned_ % 180 != 0;
    movieLibrary().mpv_get_property_async(handle, tagged(lies ? kHeight : kWidth, number_),
                                          lies ? "video-params/dw" : "dwidth", MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(lies ? kWidth : kHeight, number_),
                                          lies ? "video-params/dh" : "dheight", MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(kDuration, number_), "duration", MPV_FORMAT_DOUBLE);
    movieLibrary().mpv_get_property_async(handle, tagged(kSampleRate, number_), "audio-params/samplerate",
                                          MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(kInterlaced, number_), "video-frame-info/interlaced",
                                          MPV_FORMAT_FLAG);
    movieLibrary().mpv_get_property_async(handle, tagged(kChapters, number_), "chapter-list", MPV_FORMAT_NODE);
    movieLibrary().mpv_get_property_async(handle, tagged(kLight, number_), "video-params", MPV_FORMAT_NODE);
    movieLibrary().mpv_get_property_async(handle, tagged(kFormat, number_), "file-format", MPV_FORMAT_STRING);
}

void MoviePlayer::handleFact(const mpv_event& event) {
    const auto tag = static_cast<MovieTag>(event.reply_userdata >> 32);
    const auto number = static_cast<std::uint32_t>(event.reply_userdata);
    const void* const data = event.error < 0 ? nullptr : static_cast<const mpv_event_property*>(event.data)->data;
    if (tag == kEnd) {
        const bool atEnd = data != nullptr && *static_cast<const int*>(data) != 0;
        if (atEnd && number == turn_ && playing_ && seek_ == Seek::None && !waiting_) tellEnded();
        return;
    }
    if (number != number_ || !opening_) return;
    const auto whole = [data] {
        const std::int64_t value = data == nullptr ? 0 : *static_cast<const std::int64_t*>(data);
        return static_cast<int>(std::clamp<std::int64_t>(value, 0, kMostUnits));
    };
    switch (tag) {
        case kWidth:
            picture_.width = whole();
            break;
        case kHeight:
            picture_.height = whole();
            break;
        case kDuration:
            duration_ = data == nullptr ? 0 : sensibleLength(*static_cast<const double*>(data));
            break;
        case kSampleRate:
            sounds_ = whole() > 0;
            break;
        case kInterlaced:
            setInterlaced(data != nullptr && *static_cast<const int*>(data) != 0);
            break;
        case kChapters:
            if (data != nullptr) chapters_ = chaptersOf(*static_cast<const mpv_node*>(data));
            break;
        case kLight:
            frames().setLight(data == nullptr ? std::nullopt : lightOf(*static_cast<const mpv_node*>(data)));
            break;
        case kFormat:
            format_ = data == nullptr ? "" : *static_cast<const char* const*>(data);
            completeOpening();
            break;
        default:
            break;
    }
}

}  // namespace corvane
