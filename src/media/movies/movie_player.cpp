// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_player.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>
#include <vector>

#include "media/movies/movie_duration.h"
#include "media/movies/movie_facts.h"
#include "media/movies/movie_handle.h"
#include "media/movies/movie_library.h"
#include "media/movies/movie_tags.h"
#include "media/sound/pulse_link.h"
#include "media/sound/silence.h"
#include "media/sound/sound_backend.h"

namespace corvane {

namespace {

constexpr const char* kCardDecoder = "auto-safe";  ///< where the card has one that is known to be good
constexpr const char* kSoundServer = "pulse";      ///< as the library names it when it plays through one
}  // namespace

std::unique_ptr<MoviePlayer> MoviePlayer::make(const MovieMeans& means, MovieDrawing drawing, std::string& reason) {
    return make(makeMovieHandle(reason), means, drawing, reason);
}

std::unique_ptr<MoviePlayer> MoviePlayer::make(MovieHandle handle, const MovieMeans& means, MovieDrawing drawing,
                                               std::string& reason) {
    if (!handle) return nullptr;
    std::unique_ptr<MoviePlayer> player(new MoviePlayer(means));
    player->library_->handle = std::move(handle);
    return player->start(means, drawing, reason) ? std::move(player) : nullptr;
}

MoviePlayer::MoviePlayer(const MovieMeans& means)
    : patience_(means.timers,
                [this] {
                    stuck_ = true;
                    tellFailed("It did not open in time.");
                }),
      post_(means.post.another()) {}

/// What draws and does not come back uses the player as well: both are left as they are.
MoviePlayer::Library::~Library() {
    if (frames && !frames->end()) {
        static_cast<void>(frames.release());
        static_cast<void>(handle.release());
    }
    handle.reset();
}

bool MoviePlayer::start(const MovieMeans& means, MovieDrawing drawing, std::string& reason) {
    reason = "The movie player cannot be started";
    mpv_handle* const handle = library_->handle.get();
    silent_ = silenceWanted();
    heard_ = !silent_;
    if (!library_->source.attach(handle)) return false;
    if (drawing != MovieDrawing::Painted) movieLibrary().mpv_set_option_string(handle, "hwdec", kCardDecoder);
    library_->frames = means.makeFrames(drawing, handle, [this] { wake(); });
    if (frames().state() == MovieFrames::State::Lost) return false;
    // What is said at a place where the movie stands is read once more for them.
    tracks_.emplace(handle, library_->source, post_, [this] {
        if (!playing_ && !ended_) seek(position());
    });
    for (const auto& [name, format] :
         {std::pair{"time-pos", MPV_FORMAT_DOUBLE}, std::pair{"eof-reached", MPV_FORMAT_FLAG},
          std::pair{"duration", MPV_FORMAT_DOUBLE}, std::pair{"current-ao", MPV_FORMAT_STRING}}) {
        if (movieLibrary().mpv_observe_property(handle, 0, name, format) < 0) return false;
    }
    if (movieLibrary().mpv_hook_add(handle, 0, "on_preloaded", 0) < 0) return false;
    movieLibrary().mpv_set_wakeup_callback(
        handle, [](void* self) { static_cast<MoviePlayer*>(self)->wake(); }, this);
    return true;
}

/// What is being decoded now holds nobody up: the library's part is taken down in a worker.
MoviePlayer::~MoviePlayer() {
    counter_.giveUp();
    asker_.giveUp();
    source().giveUp();
    if (library_->handle) movieLibrary().mpv_set_wakeup_callback(library_->handle.get(), nullptr, nullptr);
    if (library_->frames) library_->frames->hush();
    Worker::run([library = std::move(library_)](const Worker::GiveUp&) mutable { library.reset(); });
    post_.stop();
}

void MoviePlayer::listen(Listener listener) {
    listener_ = std::move(listener);
    tracks_->listen(listener_.says, listener_.subtitles);
}

void MoviePlayer::wake() {
    if (woken_.exchange(true)) return;
    post_([this] { pump(); });
}

void MoviePlayer::open(const std::string& path) {
    close();
    std::error_code error;
    opening_ = true;
    path_ = std::filesystem::absolute(path, error).string();  // asks no drive
    patience_.start(static_cast<int>(std::chrono::milliseconds(kOpenPatience).count()));
    if (silent_) {
        load(false);
    } else {
        askForSound();
    }
}

/// The library would wait for ever for a server that takes its connection and says nothing.
void MoviePlayer::askForSound() {
    const auto tell = [this, post = post_, number = number_](bool heard) {
        post([this, number, heard] {
            if (number == number_) load(heard);
        });
    };
    const auto ask = [tell](const Worker::GiveUp& givenUp) { tell(soundServerGreets(kSoundPatience, givenUp)); };
    if (!asker_.start(ask, [tell] { tell(false); })) load(false);
}

void MoviePlayer::load(bool heard) {
    if (!heard && soundOutput_ == kSoundServer) {
        // The library still has the server's stream of the movie before, and waits for it to take leave.
        stuck_ = true;
        close();
        if (listener_.unusable) listener_.unusable();
        return;
    }
    if (heard != heard_) setSound(heard);
    // Without somebody who takes its frames the library would play the sound alone.
    loadWaits_ = frames().state() == MovieFrames::State::Beginning;
    if (!loadWaits_) sendLoad();
}

void MoviePlayer::sendLoad() {
    loadWaits_ = false;
    command(tagged(kLoad, number_), {"loadfile", source().begin(path_).c_str()});
}

/// The library takes another output up at once, also for what plays.
void MoviePlayer::setSound(bool heard) {
    heard_ = heard;
    const char* output = heard ? kMovieSoundOutput : kNoMovieSound;
    movieLibrary().mpv_set_property_async(library_->handle.get(), 0, "ao", MPV_FORMAT_STRING, &output);
}

void MoviePlayer::close() {
    ++number_;
    ++turn_;
    patience_.stop();
    source().giveUp();
    counter_.giveUp();
    asker_.giveUp();
    tracks_->end();
    chapters_.clear();
    opening_ = playing_ = ended_ = sounds_ = counted_ = loadWaits_ = false;
    entry_ = -1;
    seek_ = Seek::None;
    waiting_.reset();
    target_.reset();
    time_ = duration_ = 0;
    picture_ = {};
    frames().setPicture({});
    setFlag("pause", true);
    if (!path_.empty()) command(0, {"stop"});
    path_.clear();
}

void MoviePlayer::play() {
    if (path_.empty() || opening_) return;
    ++turn_;
    playing_ = true;
    if (!ended_) {
        setFlag("pause", false);
        return;
    }
    post_([this, turn = turn_] {
        if (turn == turn_) tellEnded();
    });
}

void MoviePlayer::pause() {
    playing_ = false;
    ++turn_;
    setFlag("pause", true);
}

void MoviePlayer::seek(double seconds) {
    if (path_.empty() || opening_) return;
    const double held = std::clamp(seconds, 0.0, duration_ > 0 ? duration_ : std::max(seconds, 0.0));
    ++turn_;
    ended_ = false;
    target_ = held;
    waiting_ = held;
    if (seek_ == Seek::None) sendSeek();
}

/// One seek is under way at a time; the newest that was asked for follows it.
void MoviePlayer::sendSeek() {
    if (!waiting_) return;
    const std::string text = std::to_string(*waiting_);
    waiting_.reset();
    seek_ = Seek::Sent;
    command(tagged(kSeek, number_), {"seek", text.c_str(), "absolute+exact"});
}

void MoviePlayer::setRate(double rate) {
    if (rate == rate_) return;
    const double here = position();
    rate_ = rate;
    setNumber("speed", rate);
    // What the sound server holds, seconds of it, would be heard at the rate before, and the picture would wait for it.
    if (current() && !ended_) seek(here);
}

void MoviePlayer::checkEnd() {
    if (playing_ && !opening_)
        movieLibrary().mpv_get_property_async(library_->handle.get(), tagged(kEnd, turn_), "eof-reached",
                                              MPV_FORMAT_FLAG);
}

void MoviePlayer::findSoundAgain() {
    if (heard_) {
        command(0, {"ao-reload"});
    } else {
        setSound(true);
    }
}

double MoviePlayer::position() const {
    if (ended_) return duration_ > 0 ? duration_ : time_;
    const double now = std::max(target_.value_or(time_), 0.0);
    if (duration_ > 0 && now >= duration_) return duration_;
    // In hundredths, below any frame's time: the panel shows the number as it is.
    const double rounded = std::round(now * 100) / 100;
    return duration_ > 0 ? std::min(rounded, duration_) : rounded;
}

/// The lines of two moments are one picture: each is made a picture of its own.
void MoviePlayer::setInterlaced(bool interlaced) {
    if (interlaced != interlaced_) setFlag("deinterlace", interlaced);
    interlaced_ = interlaced;
}

void MoviePlayer::completeOpening() {
    picture_ = picture_.pixels() == 0 ? PictureSize() : sensiblePicture(picture_);
    if (picture_.pixels() == 0 && !sounds_) {
        tellFailed("Neither its picture nor its sound can be decoded");
        return;
    }
    setNumber("hr-seek-demuxer-offset", seekOffset(format_));
    if (lengthIsGuessed(format_, static_cast<std::uintmax_t>(source().size()))) {
        countLength();
    } else {
        tellOpened();
    }
}

/// Where it cannot be counted the library's guess stands.
void MoviePlayer::countLength() {
    const auto tell = [this, post = post_, number = number_](std::optional<double> counted) {
        post([this, number, counted] {
            if (number != number_) return;
            if (counted) duration_ = sensibleLength(*counted);
            counted_ = counted.has_value();
            tellOpened();
        });
    };
    const auto count = [tell, path = path_](const Worker::GiveUp& givenUp) { tell(countedLength(path, givenUp)); };
    if (!counter_.start(count, [tell] { tell(std::nullopt); })) tellOpened();
}

void MoviePlayer::tellOpened() {
    opening_ = false;
    source().opened();
    patience_.stop();
    frames().setPicture(picture_);
    tracks_->begin(path_);
    if (listener_.opened) listener_.opened();
}

void MoviePlayer::tellFailed(const std::string& reason) {
    if (path_.empty() && !opening_) return;
    close();
    if (listener_.failed) listener_.failed(reason);
}

void MoviePlayer::tellEnded() {
    playing_ = false;
    ended_ = true;
    target_.reset();
    setFlag("pause", true);
    if (listener_.ended) listener_.ended();
}

void MoviePlayer::setFlag(const char* name, bool on) {
    int flag = on ? 1 : 0;
    movieLibrary().mpv_set_property_async(library_->handle.get(), 0, name, MPV_FORMAT_FLAG, &flag);
}

void MoviePlayer::setNumber(const char* name, double value) {
    movieLibrary().mpv_set_property_async(library_->handle.get(), 0, name, MPV_FORMAT_DOUBLE, &value);
}

void MoviePlayer::command(std::uint64_t tag, std::initializer_list<const char*> words) {
    std::vector<const char*> list(words);
    list.push_back(nullptr);
    movieLibrary().mpv_command_async(library_->handle.get(), tag, list.data());
}

}  // namespace corvane
