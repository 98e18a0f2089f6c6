// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_player.h"

#include <QMetaObject>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>
#include <vector>

#include "media/movies/movie_duration.h"
#include "media/movies/movie_handle.h"
#include "media/movies/movie_library.h"
#include "media/sound/pulse_link.h"
#include "media/sound/silence.h"
#include "media/sound/sound_backend.h"
#include "types/text.h"

namespace corvane {

namespace {

// What a reply answers stands in the high half of its tag, the number of the open or turn in the low half.
enum Tag : std::uint64_t { kLoad = 1, kSeek, kEnd, kWidth, kHeight, kDuration, kSampleRate, kFormat };

constexpr std::uint64_t tagged(Tag tag, std::uint32_t number) { return std::uint64_t{tag} << 32 | number; }

/// Program streams have no index: an exact seek must start well before its target.
double seekOffset(const std::string& format) { return format.starts_with("mpeg") ? 2 : 0; }

constexpr const char* kSoundServer = "pulse";  ///< as the library names it when it plays through one

constexpr int kMostUnits = 1'000'000'000;
constexpr int kMostSide = 8'192;
constexpr double kMostArea = kMostMoviePixels;

/// A picture can say that its pixels are a thousand times as wide as high: it keeps that shape, in a window's size.
QSize sensiblePicture(QSize said) {
    QSizeF size(said);
    const double area = size.width() * size.height();
    if (area > kMostArea) size *= std::sqrt(kMostArea / area);
    const double side = std::max(size.width(), size.height());
    if (side > kMostSide) size *= kMostSide / side;
    return size.toSize().expandedTo({1, 1});
}

/// What a file says of its length is not to be believed.
double sensibleLength(double seconds) {
    return std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, static_cast<double>(kMostSeconds));
}

/// The library's word for an error, as a sentence.
std::string sentence(int error) {
    std::string text = movieLibrary().mpv_error_string(error);
    if (!text.empty()) text[0] = text::upper(text[0]);
    return text;
}

}  // namespace

std::unique_ptr<MoviePlayer> MoviePlayer::make(std::string& reason) {
    std::unique_ptr<MoviePlayer> player(new MoviePlayer);
    return player->start(reason) ? std::move(player) : nullptr;
}

bool MoviePlayer::start(std::string& reason) {
    library_->handle = makeMovieHandle(reason);
    if (!library_->handle) return false;
    reason = "The movie player cannot be started";
    mpv_handle* const handle = library_->handle.get();
    silent_ = silenceWanted();
    heard_ = !silent_;
    patience_.setSingleShot(true);
    patience_.setInterval(kOpenPatience);
    QObject::connect(&patience_, &QTimer::timeout, &patience_, [this] {
        stuck_ = true;
        tellFailed("It did not open in time.");
    });
    if (!library_->source.attach(handle)) return false;
    library_->frames = std::make_unique<MovieFrames>(handle, [this] { wake(); });
    if (!library_->frames->usable()) return false;
    for (const auto& [name, format] :
         {std::pair{"time-pos", MPV_FORMAT_DOUBLE}, std::pair{"eof-reached", MPV_FORMAT_FLAG},
          std::pair{"duration", MPV_FORMAT_DOUBLE}, std::pair{"current-ao", MPV_FORMAT_STRING}}) {
        if (movieLibrary().mpv_observe_property(handle, 0, name, format) < 0) return false;
    }
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

void MoviePlayer::wake() {
    if (woken_.exchange(true)) return;
    post_([this] { pump(); });
}

void MoviePlayer::open(const std::string& path) {
    close();
    std::error_code error;
    opening_ = true;
    path_ = std::filesystem::absolute(path, error).string();  // asks no drive
    patience_.start();
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
    opening_ = playing_ = ended_ = sounds_ = counted_ = false;
    entry_ = -1;
    seek_ = Seek::None;
    waiting_.reset();
    target_.reset();
    time_ = duration_ = 0;
    picture_ = {0, 0};
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
    const auto endAgain = [this, turn = turn_] {
        if (turn == turn_) tellEnded();
    };
    QMetaObject::invokeMethod(&receiver_, endAgain, Qt::QueuedConnection);
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

void MoviePlayer::pump() {
    woken_ = false;
    const std::uint32_t before = number_;
    while (true) {
        const mpv_event* const event = movieLibrary().mpv_wait_event(library_->handle.get(), 0);
        if (event->event_id == MPV_EVENT_NONE) break;
        handle(*event);
    }
    if (frames().update() && before == number_ && !opening_ && listener_.frameReady) listener_.frameReady();
}

void MoviePlayer::handle(const mpv_event& event) {
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
            handleFact(event);
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
        const std::string unplayed = error < 0 ? sentence(error) : "Nothing in it can be played";
        tellFailed(unread.empty() ? unplayed : unread);
    } else {
        tellEnded();
    }
}

void MoviePlayer::handleReply(const mpv_event& event) {
    if (static_cast<std::uint32_t>(event.reply_userdata) != number_) return;
    const auto tag = static_cast<Tag>(event.reply_userdata >> 32);
    if (tag == kSeek) {
        const bool refused = event.error < 0;
        seek_ = refused ? Seek::None : Seek::Answered;
        if (refused) sendSeek();
        return;
    }
    if (tag != kLoad) return;
    if (event.error < 0) {
        tellFailed(sentence(event.error));
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

/// Asks for what is known once the first picture stands; the answers come in this order.
void MoviePlayer::learnFacts() {
    mpv_handle* const handle = library_->handle.get();
    movieLibrary().mpv_get_property_async(handle, tagged(kWidth, number_), "dwidth", MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(kHeight, number_), "dheight", MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(kDuration, number_), "duration", MPV_FORMAT_DOUBLE);
    movieLibrary().mpv_get_property_async(handle, tagged(kSampleRate, number_), "audio-params/samplerate",
                                          MPV_FORMAT_INT64);
    movieLibrary().mpv_get_property_async(handle, tagged(kFormat, number_), "file-format", MPV_FORMAT_STRING);
}

void MoviePlayer::handleFact(const mpv_event& event) {
    const auto tag = static_cast<Tag>(event.reply_userdata >> 32);
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
            picture_.setWidth(whole());
            break;
        case kHeight:
            picture_.setHeight(whole());
            break;
        case kDuration:
            duration_ = data == nullptr ? 0 : sensibleLength(*static_cast<const double*>(data));
            break;
        case kSampleRate:
            sounds_ = whole() > 0;
            break;
        case kFormat:
            format_ = data == nullptr ? "" : *static_cast<const char* const*>(data);
            completeOpening();
            break;
        default:
            break;
    }
}

void MoviePlayer::completeOpening() {
    picture_ = picture_.isEmpty() ? QSize(0, 0) : sensiblePicture(picture_);
    if (picture_.isEmpty() && !sounds_) {
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
