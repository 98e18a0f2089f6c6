// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_mci_control.h"

#include <algorithm>
#include <numeric>

namespace corvane {

namespace {

constexpr int kFramesPerSecond = 75;
constexpr int kFramesPerMinute = 60 * kFramesPerSecond;

std::int64_t byteAt(std::int32_t packed, unsigned shift) { return static_cast<std::uint32_t>(packed) >> shift & 0xFFU; }

std::int32_t pack(std::int64_t first, std::int64_t second, std::int64_t third, std::int64_t fourth) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(first | second << 8 | third << 16 | fourth << 24));
}

std::int32_t packLength(std::int64_t frames) {
    return pack(frames / kFramesPerMinute, frames / kFramesPerSecond % 60, frames % kFramesPerSecond, 0);
}

}  // namespace

FakeMciControl::FakeMciControl(FakeMedia& media) : media_(media) { media_.mciControls_.push_back(this); }

FakeMciControl::~FakeMciControl() {
    settle();
    std::erase(media_.mciControls_, this);
}

void FakeMciControl::DeviceType(const std::string& type) {
    media_.log.did("mci.DeviceType " + type);
    deviceType_ = type;
}

void FakeMciControl::FileName(const std::string& path) {
    media_.log.did("mci.FileName " + path);
    fileName_ = path;
}

void FakeMciControl::Command(std::string_view command) {
    media_.log.did("mci.Command " + std::string(command));
    if (command == "Open") {
        open();
    } else if (!device_) {
        return;
    } else if (command == "Close") {
        settle();
        device_.reset();
        playing_ = paused_ = false;
        position_ = 0;
    } else if (command == "Play") {
        play();
    } else if (command == "Pause") {
        pause();
    } else if (command == "Stop") {
        stop();
    } else if (command == "Seek") {
        seek();
    } else {
        return;
    }
    from_.reset();
    to_.reset();
}

void FakeMciControl::TimeFormat(int format) {
    media_.log.did("mci.TimeFormat " + std::to_string(format));
    format_ = format;
}

void FakeMciControl::UpdateInterval(int milliseconds) {
    media_.log.did("mci.UpdateInterval " + std::to_string(milliseconds));
    intervalMs_ = milliseconds;
    if (!playing_) return;
    media_.schedule.cancel(statusId_);
    planStatus();
}

void FakeMciControl::Track(int track) {
    media_.log.did("mci.Track " + std::to_string(track));
    track_ = track;
}

std::int32_t FakeMciControl::TrackLength() const {
    media_.log.asked("mci.TrackLength");
    if (!device_ || track_ < 1 || track_ > static_cast<int>(device_->tracks.size())) return 0;
    const std::int64_t units = device_->tracks[static_cast<std::size_t>(track_ - 1)];
    return packLength(units * kFramesPerSecond / device_->unitsPerSecond);
}

std::int32_t FakeMciControl::Length() const {
    media_.log.asked("mci.Length");
    if (!device_) return 0;
    if (format_ == kFormatTmsf) return packLength(device_->end * kFramesPerSecond / device_->unitsPerSecond);
    return static_cast<std::int32_t>(device_->end * 1000 / device_->unitsPerSecond);
}

std::int32_t FakeMciControl::Position() const {
    media_.log.asked("mci.Position");
    return device_ ? fromUnits(unitsNow()) : 0;
}

void FakeMciControl::From(std::int32_t position) {
    media_.log.did("mci.From " + std::to_string(position));
    from_ = position;
}

void FakeMciControl::To(std::int32_t position) {
    media_.log.did("mci.To " + std::to_string(position));
    to_ = position;
}

void FakeMciControl::fail(const std::string& reason) {
    settle();
    device_.reset();
    playing_ = paused_ = false;
    media_.loop.post([this, reason, now = present_.ticket()] {
        if (now.isCurrent()) Failed.raise(reason);
    });
}

void FakeMciControl::correctLength(std::int32_t milliseconds) {
    device_->tracks = {milliseconds};
    device_->end = milliseconds;
}

void FakeMciControl::postDone(int code) {
    media_.loop.post([this, code, now = present_.ticket()] {
        if (now.isCurrent()) Done.raise(code);
    });
}

void FakeMciControl::open() {
    settle();
    device_.reset();
    playing_ = paused_ = false;
    position_ = 0;
    level_ = wanted_;
    if (deviceType_ == "CDAudio") {
        const FakeDisc* disc = media_.discAt(fileName_);
        if (disc == nullptr) return fail("no disc");
        device_ = Device{{disc->trackFrames.begin(), disc->trackFrames.end()}, kFramesPerSecond, 0};
    } else {
        const auto found = media_.sounds.find(fileName_);
        if (found == media_.sounds.end()) return fail("no such file");
        if (!found->second.failure.empty()) return fail(found->second.failure);
        device_ = Device{{found->second.lengthMs}, 1000, 0};
    }
    device_->end = std::accumulate(device_->tracks.begin(), device_->tracks.end(), std::int64_t{0});
}

void FakeMciControl::play() {
    settle();
    if (from_) position_ = toUnits(*from_);
    playEnd_ = to_ ? endUnits(*to_) : device_->end;
    startedAt_ = media_.schedule.now();
    playing_ = true;
    paused_ = false;
    plan();
}

void FakeMciControl::pause() {
    if (!playing_) return;
    settle();
    playing_ = false;
    paused_ = true;
}

void FakeMciControl::stop() {
    settle();
    playing_ = paused_ = false;
}

void FakeMciControl::seek() {
    settle();
    playing_ = false;
    position_ = to_ ? toUnits(*to_) : 0;
}

void FakeMciControl::settle() {
    position_ = device_ ? unitsNow() : 0;
    startedAt_ = media_.schedule.now();
    media_.schedule.cancel(endId_);
    media_.schedule.cancel(statusId_);
    statusWaits_ = false;
    present_.next();
}

void FakeMciControl::plan() {
    const std::int64_t left = std::max<std::int64_t>(playEnd_ - position_, 0);
    const std::int64_t rate = device_->unitsPerSecond;
    endId_ = media_.schedule.at(startedAt_ + (left * 1000 + rate - 1) / rate, [this] {
        position_ = std::max(playEnd_, position_);
        playing_ = false;
        media_.schedule.cancel(statusId_);
        postDone(kNotifySuccessful);
    });
    planStatus();
}

void FakeMciControl::planStatus() {
    if (intervalMs_ < 1) return;
    statusId_ = media_.schedule.at(media_.schedule.now() + intervalMs_, [this] {
        planStatus();
        if (statusWaits_) return;
        statusWaits_ = true;
        media_.loop.post([this, now = present_.ticket()] {
            if (!now.isCurrent()) return;
            statusWaits_ = false;
            if (playing_) StatusUpdate.raise();
        });
    });
}

std::int64_t FakeMciControl::unitsNow() const {
    if (!playing_) return position_;
    const std::int64_t passed = (media_.schedule.now() - startedAt_) * device_->unitsPerSecond / 1000;
    return std::min(position_ + passed, std::max(playEnd_, position_));
}

/// Track 0 of a packed position is the first one; a second of 60 counts as the next minute; what lies behind the track
/// is its end.
std::int64_t FakeMciControl::toUnits(std::int32_t position) const {
    if (format_ != kFormatTmsf) {
        const std::int64_t units = static_cast<std::int64_t>(position) * device_->unitsPerSecond / 1000;
        return std::clamp<std::int64_t>(units, 0, device_->end);
    }
    const auto track = static_cast<std::size_t>(std::max<std::int64_t>(byteAt(position, 0), 1) - 1);
    if (track >= device_->tracks.size()) return device_->end;
    std::int64_t start = 0;
    for (std::size_t i = 0; i < track; ++i) start += device_->tracks[i];
    const std::int64_t frames =
        byteAt(position, 8) * kFramesPerMinute + byteAt(position, 16) * kFramesPerSecond + byteAt(position, 24);
    return start + std::min(frames * device_->unitsPerSecond / kFramesPerSecond, device_->tracks[track]);
}

/// A track's own place as the end of its play is the track's end.
std::int64_t FakeMciControl::endUnits(std::int32_t to) const {
    const bool isOfTrack = byteAt(to, 0) == to && byteAt(fromUnits(position_), 0) == to;
    if (format_ != kFormatTmsf || !isOfTrack) return toUnits(to);
    return toUnits(pack(to, 99, 0, 0));
}

std::int32_t FakeMciControl::fromUnits(std::int64_t units) const {
    if (format_ != kFormatTmsf) return static_cast<std::int32_t>(units * 1000 / device_->unitsPerSecond);
    std::size_t track = 0;
    while (track + 1 < device_->tracks.size() && units >= device_->tracks[track]) units -= device_->tracks[track++];
    const std::int64_t frames = units * kFramesPerSecond / device_->unitsPerSecond;
    return pack(static_cast<std::int64_t>(track) + 1, frames / kFramesPerMinute, frames / kFramesPerSecond % 60,
                frames % kFramesPerSecond);
}

}  // namespace corvane
