// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/sound/desktop_mci_control.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "discs/cd_arithmetic.h"
#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"

namespace corvane {

namespace {

constexpr int kDefaultInterval = 1000;
/// How long before an end is heard it is told: the next file opens in less.
constexpr double kEarlySeconds = 0.02;
constexpr double kEarlierSeconds = 0.08;

OpenedSound openSound(const std::string& device, const std::string& file,
                      const std::shared_ptr<Synthesizer>& synthesizer, const Abandoned& flag) {
    if (device == "CDAudio") return openCdSound(file, flag);
    // Opened once, whatever it turns out to be.
    std::string reason;
    auto opened = DriveFile::open(file, {DriveCalls::kLongPatience, flag.get()}, reason);
    if (!opened) return {nullptr, std::move(reason)};
    if (device == "Sequencer" || holdsMidi(*opened)) return MidiSound::open(std::move(opened), synthesizer, flag);
    return FileSound::open(std::move(opened), flag);
}

}  // namespace

DesktopMciControl::DesktopMciControl(SoundStation& station) : station_(station) {
    updates_.setInterval(kDefaultInterval);
    QObject::connect(&updates_, &QTimer::timeout, [this] {
        if (std::exchange(updatePosted_, true)) return;
        later([this] {
            updatePosted_ = false;
            if (state_ == State::Playing) StatusUpdate.raise();
        });
    });
}

DesktopMciControl::~DesktopMciControl() { closeDevice(); }

/// Posts an event that is dropped when the control has gone.
void DesktopMciControl::later(EventLoop::Handler event) {
    station_.loop.post([alive = std::weak_ptr(alive_), event = std::move(event)] {
        if (!alive.expired()) event();
    });
}

void DesktopMciControl::change(State state) {
    state_ = state;
    if (state != State::Playing) {
        updates_.stop();
    } else if (!updates_.isActive()) {
        updates_.start();
    }
}

void DesktopMciControl::UpdateInterval(int milliseconds) { updates_.setInterval(std::max(1, milliseconds)); }

void DesktopMciControl::openDevice() {
    closeDevice();
    const std::uint64_t ticket = ticket_;
    change(State::Opening);
    job_ = OpenJob::start([device = DeviceType(), file = fileName(), synthesizer = station_.synthesizer](
                              const Abandoned& flag) { return openSound(device, file, synthesizer, flag); },
                          [this, ticket, post = station_.post, alive = std::weak_ptr(alive_)] {
                              post([this, ticket, alive] {
                                  if (!alive.expired() && ticket == ticket_ && state_ == State::Opening) adopt();
                              });
                          });
    job_->wait();
    if (job_->finished()) adopt();
}

/// The job is done: takes its sound and does what was asked for meanwhile, or fails.
void DesktopMciControl::adopt() {
    sound_ = job_->sound();
    if (!sound_) return fail(job_->reason());
    change(State::Stopped);
    const Wish wish = std::exchange(wish_, {});
    if (wish.at) seek(*wish.at);
    if (wish.play) play(std::nullopt, wish.to);
    if (wish.hold) pause();
}

void DesktopMciControl::fail(const std::string& reason) {
    closeDevice();
    later([this, reason, ticket = ticket_] {
        if (ticket == ticket_) Failed.raise(reason);
    });
}

void DesktopMciControl::closeDevice() {
    ++ticket_;
    leavePart();
    change(State::Closed);
    if (job_) job_->abandon();
    job_.reset();
    sound_.reset();
    wish_ = {};
    at_ = 0;
}

/// Takes our sound out of the output, remembering the place.
void DesktopMciControl::leavePart() {
    at_ = here();
    if (part_ != 0) station_.output.stop(part_);
    part_ = 0;
    endedPaused_ = false;
}

void DesktopMciControl::play(Place from, Place to) {
    if (state_ == State::Opening) {
        // Without a place it goes on from where it stands, as it will when it is open.
        wish_ = {from ? from : wish_.at, to, true, false};
        return;
    }
    const std::int64_t start = from ? frames(*from) : here();
    const std::int64_t end = to ? endFrame(*to, start) : SoundOutput::kToEnd;
    if (part_ != 0 && !from && end == partEnd_) {
        if (state_ == State::Playing) return;
        change(State::Playing);
        station_.output.resume(part_);
        if (std::exchange(endedPaused_, false)) startPart(here(), end);
        return;
    }
    leavePart();
    startPart(start, end);
}

void DesktopMciControl::startPart(std::int64_t from, std::int64_t to) {
    const std::uint64_t ticket = ++ticket_;
    at_ = from;
    partEnd_ = to;
    change(State::Playing);
    const std::int64_t length = sound_->frames();
    if ((length > 0 && from >= length) || (to != SoundOutput::kToEnd && from >= to)) {
        part_ = 0;
        later([this, ticket, from] { ended(ticket, from); });
        return;
    }
    SoundOutput::Part part{sound_, from, to, canOpenQuickly() ? kEarlySeconds : kEarlierSeconds, {}, true};
    part.ended = [this, ticket, post = station_.post, alive = std::weak_ptr(alive_)](std::int64_t end) {
        post([this, ticket, end, alive] {
            if (!alive.expired()) ended(ticket, end);
        });
    };
    part_ = station_.output.play(std::move(part));
    if (part_ == 0) return fail(Worker::kRefused);
    later([this, part = part_] { station_.output.release(part); });
}

/// Whether a next file of any kind opens without a library or the synthesizer's sounds being loaded first.
bool DesktopMciControl::canOpenQuickly() const { return avIsLoaded() && station_.synthesizer->isLoaded(); }

void DesktopMciControl::ended(std::uint64_t playNumber, std::int64_t end) {
    if (playNumber != ticket_) return;
    if (state_ != State::Playing) {
        endedPaused_ = state_ == State::Paused;
        return;
    }
    leavePart();
    ++ticket_;
    at_ = end;
    change(State::Stopped);
    Done.raise(kNotifySuccessful);
}

void DesktopMciControl::pause() {
    wish_.hold = wish_.play && state_ == State::Opening;
    if (state_ != State::Playing) return;
    change(State::Paused);
    station_.output.pause(part_);
}

void DesktopMciControl::stop() {
    wish_.play = wish_.hold = false;
    if (state_ == State::Opening) return;
    ++ticket_;
    leavePart();
    change(State::Stopped);
}

void DesktopMciControl::seek(std::int32_t to) {
    if (state_ == State::Opening) {
        wish_ = {to, std::nullopt, false, false};
        return;
    }
    ++ticket_;
    const bool stopped = state_ == State::Stopped;
    leavePart();
    at_ = frames(to);
    change(stopped ? State::Stopped : State::Paused);
}

/// A place in the time format as frames inside the sound.
std::int64_t DesktopMciControl::frames(std::int32_t place) const {
    const int rate = sound_->format().rate;
    const std::int64_t frame =
        timeFormat() == kFormatTmsf ? sound_->fromTmsf(place) : (std::int64_t{place} * rate + 500) / 1000;
    const std::int64_t length = sound_->frames();
    return std::clamp<std::int64_t>(frame, 0, length > 0 ? length : std::numeric_limits<std::int64_t>::max());
}

/// The end of a play from `start`. A track's own place as the end of its play is that of a disc whose lengths were not
/// known yet: the track's end is meant.
std::int64_t DesktopMciControl::endFrame(std::int32_t to, std::int64_t start) const {
    if (timeFormat() != kFormatTmsf || unpackTmsf(to).sectors != 0) return frames(to);
    const int track = unpackTmsf(to).track;
    if (unpackTmsf(sound_->toTmsf(start)).track != track) return frames(to);
    return frames(static_cast<std::int32_t>(static_cast<std::uint32_t>(sound_->trackLength(track)) << 8U) + track);
}

std::int32_t DesktopMciControl::place(std::int64_t frames) const {
    const int rate = sound_->format().rate;
    if (timeFormat() == kFormatTmsf) return sound_->toTmsf(frames);
    const std::int64_t milliseconds = (std::min(frames, kMostSeconds * rate) * 1000 + rate / 2) / rate;
    return static_cast<std::int32_t>(milliseconds);
}

std::int64_t DesktopMciControl::here() const {
    const std::int64_t played = part_ != 0 ? station_.output.position(part_) : -1;
    return played >= 0 ? played : at_;
}

std::int32_t DesktopMciControl::TrackLength() const { return sound_ ? sound_->trackLength(track()) : 0; }

std::int32_t DesktopMciControl::Length() const { return sound_ ? place(sound_->frames()) : 0; }

std::int32_t DesktopMciControl::Position() const {
    if (!sound_) return wish_.at.value_or(0);
    // A track that has been played to its end stands at its own last place, not at the start of the next one.
    const std::int64_t now = here();
    const bool atEnd = timeFormat() == kFormatTmsf && part_ != 0 && now == partEnd_;
    return place(atEnd ? now - 1 : now);
}

}  // namespace corvane
