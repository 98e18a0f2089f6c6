// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_session.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "engine/media_time.h"
#include "engine/opened_lists.h"
#include "lists/foreign_list.h"

namespace corvane {

using mdlDefinePublic::kFullVolume;
using mdlPublicFunction::canGoForward;
using mdlPublicFunction::isPlayed;
using mdlPublicFunction::isProgressing;
using mdlPublicFunction::openFiles;
using mdlPublicFunction::openLengthUs;
using mdlPublicFunction::openPositionUs;
using mdlPublicFunction::PauseFile;
using mdlPublicFunction::PlayFile;
using mdlPublicFunction::powerOff;
using mdlPublicFunction::seekOpenFile;
using mdlPublicFunction::setVolumeLevel;
using mdlPublicFunction::ShuffleList;
using mdlPublicFunction::skipToNext;
using mdlPublicFunction::skipToPrevious;
using mdlPublicFunction::stopAll;
using mdlPublicFunction::titleOf;
using mdlPublicFunction::toggleRepeat;

namespace {

// How far the position of what is paused may be from where a listener expects it.
constexpr std::int64_t kHeldToleranceUs = 100'000;

std::int64_t sum(std::int64_t a, std::int64_t b) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (b > 0 && a > Limits::max() - b) return Limits::max();
    if (b < 0 && a < Limits::min() - b) return Limits::min();
    return a + b;
}

std::string nameOf(const Player& player, const std::string& path) {
    const std::size_t separator = path.rfind(player.ports.files.separator());
    return titleOf(player.conveniences, separator == std::string::npos ? path : path.substr(separator + 1));
}

}  // namespace

MediaSession::MediaSession(Player& player)
    : player_(player), still_(player.ports.loop, EventLoop::When::Still, [this] { look(); }) {}

MediaSession::~MediaSession() {
    if (idle_ != nullptr && watched_) idle_->inhibit(false);
}

bool MediaSession::isWatched() const {
    if (!state_.ready || state_.status != MediaState::Status::Playing) return false;
    const auto medium = player_.media.current();
    return medium && medium->isWatched();
}

std::vector<std::string> MediaSession::mimeTypes() const {
    std::vector<std::string> types = player_.types.mimeTypes();
    if (!player_.conveniences.lists) return types;
    for (std::string& each : listMimeTypes()) types.push_back(std::move(each));
    return types;
}

std::int64_t MediaSession::positionUs() const {
    return status() == MediaState::Status::Stopped ? 0 : openPositionUs(player_);
}

MediaState::Status MediaSession::status() const {
    const auto* panel = player_.forms.find<MainPanelControls>();
    // While a box asks about a file that could not be opened, the panel shows what the call left: nothing plays.
    if (panel == nullptr || panel->isStopped() || !player_.media.isOpen()) return MediaState::Status::Stopped;
    return panel->isPaused() ? MediaState::Status::Paused : MediaState::Status::Playing;
}

void MediaSession::look() {
    MediaState seen;
    seen.ready = player_.forms.find<MainPanelControls>() != nullptr && player_.forms.find(FormId::Startup) == nullptr &&
                 !player_.ports.process.ending();
    if (seen.ready) {
        const bool any = player_.gFileCount > 0;
        seen.status = status();
        const bool stopped = seen.status == MediaState::Status::Stopped;
        seen.repeat = player_.gRepeat;
        seen.volume = player_.gVolume;
        seen.lengthUs = stopped ? 0 : openLengthUs(player_);
        // At the list's end a file that is open can be left as well: next then stops.
        seen.canGoNext = !stopped || (any && canGoForward(player_));
        seen.canGoPrevious = any && (player_.gFileIndex > 0 || player_.gRepeat);
        seen.canPlay = any || player_.gPlaying;
        seen.canPause = any || !stopped;
        seen.canSeek = seen.lengthUs > 0;
        nameTrack(seen);
    }
    const MediaState before = std::exchange(state_, std::move(seen));
    if (state_ != before) Changed.raise();
    const bool watched = isWatched();
    if (idle_ != nullptr && watched != watched_) idle_->inhibit(watched);
    watched_ = watched;
    if (state_.ready) lookAtPosition(before);
    if (player_.ports.loop.held()) BoxUp.raise();
}

/// The same entry keeps its number when it is shuffled to another place and when it begins again.
void MediaSession::nameTrack(MediaState& seen) {
    const bool open = player_.media.isOpen();
    const auto index = static_cast<std::size_t>(player_.gFileIndex);
    const bool hasEntry = player_.gFileIndex < player_.gFileCount;
    if (!open && !hasEntry) return;
    seen.path = open ? player_.openedPath : player_.gFilePath[index];
    const bool isEntry = hasEntry && player_.gFilePath[index] == seen.path;
    if (isEntry) {
        seen.title = player_.gFileTitle[index];
        seen.number = player_.gFileIndex + 1;
    }
    if (seen.title.empty()) seen.title = nameOf(player_, seen.path);
    if (player_.texts.find(seen.path) == nullptr) player_.texts.expect(seen.path);
    if (const FileTexts* const texts = player_.texts.find(seen.path)) {
        if (!texts->title.empty()) seen.title = texts->title;
        seen.artist = texts->artist;
        seen.album = texts->album;
        seen.albumNumber = texts->track;
        if (texts->cover) seen.cover = texts->cover->path();
    }

    const bool isSame = state_.track != 0 && state_.path == seen.path &&
                        (player_.gFileIndex == trackIndex_ || (open && player_.opening.number == trackOpening_));
    seen.track = isSame ? state_.track : ++tracks_;
    trackIndex_ = player_.gFileIndex;
    trackOpening_ = player_.opening.number;
}

/// Tells a position that one who counts on from the last one does not expect.
void MediaSession::lookAtPosition(const MediaState& before) {
    using Status = MediaState::Status;
    const std::int64_t nowMs = player_.ports.clock.milliseconds();
    const bool fresh = before.track != state_.track || before.status == Status::Stopped;
    std::int64_t expected = fresh || state_.status == Status::Stopped ? 0 : toldUs_;
    if (!fresh && before.status == Status::Playing) expected = sum(expected, (nowMs - toldAtMs_) * 1000);
    if (state_.lengthUs > 0) expected = std::min(expected, state_.lengthUs);
    if (fresh || before.status != state_.status) {
        toldUs_ = expected;
        toldAtMs_ = nowMs;
    }
    if (state_.status == Status::Stopped) return;

    const std::int64_t position = positionUs();
    std::int64_t tolerance = kHeldToleranceUs;
    if (state_.status == Status::Playing) {
        if (!isProgressing(player_) || position == 0) return;  // it has not begun, or it has ended
        tolerance = player_.media.current()->toleranceUs();
    }
    if (position < expected - tolerance || position > expected + tolerance) tellPosition(position);
}

void MediaSession::tellPosition(std::int64_t nowUs) {
    toldUs_ = nowUs;
    toldAtMs_ = player_.ports.clock.milliseconds();
    Seeked.raise(nowUs);
}

bool MediaSession::isBusy() const {
    return !state_.ready || player_.forms.find(FormId::FileList) != nullptr ||
           player_.forms.find(FormId::Custom) != nullptr;
}

MediaSession::Answer MediaSession::raise() {
    if (isBusy()) return Answer::Busy;
    auto& panel = *player_.forms.find<MainPanelControls>();
    panel.WindowState = WindowState::Normal;
    player_.ports.windows.activate(panel);
    return Answer::Done;
}

MediaSession::Answer MediaSession::quit() {
    if (isBusy()) return Answer::Busy;
    powerOff(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::next() {
    if (isBusy()) return Answer::Busy;
    if (state_.canGoNext) skipToNext(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::previous() {
    if (isBusy()) return Answer::Busy;
    if (state_.canGoPrevious) skipToPrevious(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::play() {
    if (isBusy()) return Answer::Busy;
    if (status() != MediaState::Status::Playing) PlayFile(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::pause() {
    if (isBusy()) return Answer::Busy;
    PauseFile(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::playPause() {
    if (isBusy()) return Answer::Busy;
    if (!state_.canPause) return Answer::NotSupported;
    return status() == MediaState::Status::Playing ? pause() : play();
}

MediaSession::Answer MediaSession::stop() {
    if (isBusy()) return Answer::Busy;
    stopAll(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::seekBy(std::int64_t offsetUs) {
    if (isBusy()) return Answer::Busy;
    if (!state_.canSeek) return Answer::Done;
    const std::int64_t target = sum(positionUs(), offsetUs);
    if (target > openLengthUs(player_)) return next();
    return seekTo(state_.track, std::max<std::int64_t>(target, 0));
}

MediaSession::Answer MediaSession::seekTo(std::uint32_t track, std::int64_t positionUs) {
    if (isBusy()) return Answer::Busy;
    if (!state_.canSeek || track != state_.track) return Answer::Done;
    if (positionUs < 0 || positionUs > openLengthUs(player_)) return Answer::Done;
    seekOpenFile(player_, positionUs);
    tellPosition(this->positionUs());
    return Answer::Done;
}

MediaSession::Answer MediaSession::open(const std::string& path) {
    if (isBusy()) return Answer::Busy;
    const bool isFile = isPlayed(player_, path) || isNameOfList(player_, path);
    const bool isThere = isFile && player_.ports.files.lookUp(path);
    if (!isThere && !opensAsFolder(player_, path)) return isFile ? Answer::Invalid : Answer::NotSupported;
    openFiles(player_, {path});
    return Answer::Done;
}

MediaSession::Answer MediaSession::setLoop(Loop loop) {
    if (isBusy()) return Answer::Busy;
    if (loop == Loop::Track) return Answer::NotSupported;
    if (player_.gRepeat != (loop == Loop::Playlist)) toggleRepeat(player_);
    return Answer::Done;
}

MediaSession::Answer MediaSession::setShuffle(bool on) {
    if (isBusy()) return Answer::Busy;
    if (on && player_.gFileCount > 2) ShuffleList(player_);  // as the panel's button does
    return Answer::Done;
}

MediaSession::Answer MediaSession::setVolume(double level) {
    if (isBusy()) return Answer::Busy;
    if (std::isnan(level)) return Answer::Invalid;
    setVolumeLevel(player_, static_cast<std::int16_t>(std::nearbyint(std::clamp(level, 0.0, 1.0) * kFullVolume)));
    return Answer::Done;
}

MediaSession::Answer MediaSession::setRate(double rate) {
    if (isBusy()) return Answer::Busy;
    return rate == 0 ? pause() : Answer::Done;
}

}  // namespace corvane
