// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/cd_sound.h"

#include <algorithm>

#include "desktop/drive_calls.h"
#include "desktop/media/cd_folder.h"

namespace corvane {

namespace {

constexpr float kFullScale = 32768.0F;
constexpr std::int64_t kSectorsAtOnce = 10;  ///< asked for together: an eighth of a second
constexpr std::size_t kSamplesOfSector = std::size_t{kCdFramesPerSector} * 2;

/// Sounds of the sectors one after the other; silence where they are data or unreadable.
std::vector<std::int16_t> readSectors(CdDisc& disc, std::int64_t first, std::int64_t count) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(count) * kSamplesOfSector);
    for (std::int64_t i = 0; i < count; ++i) {
        const CdTrack* const track = trackAt(disc.tracks(), first + i);
        if (!track->audio || first + i >= track->start + track->length) continue;
        std::int16_t* const sector = samples.data() + static_cast<std::size_t>(i) * kSamplesOfSector;
        if (!disc.readSector(first + i, sector)) std::fill_n(sector, kSamplesOfSector, std::int16_t{0});
    }
    return samples;
}

}  // namespace

CdSound::CdSound(std::shared_ptr<CdDisc> disc, std::string place)
    : disc_(std::move(disc)),
      place_(std::move(place)),
      first_(disc_->tracks().front().start),
      last_(disc_->tracks().back().start + disc_->tracks().back().length) {}

CdSound::~CdSound() { DriveCalls::release(std::move(disc_)); }

const std::int16_t* CdSound::fetch(std::int64_t sector) {
    const auto held = static_cast<std::int64_t>(sectors_.size() / kSamplesOfSector);
    if (fetched_ < 0 || sector < fetched_ || sector >= fetched_ + held) {
        const std::int64_t count = std::min(kSectorsAtOnce, last_ - sector);
        auto read = DriveCalls::all().ask<std::vector<std::int16_t>>(
            place_, {DriveCalls::kLongPatience, &abandoned},
            [disc = disc_, sector, count] { return readSectors(*disc, sector, count); });
        sectors_ =
            read ? std::move(*read) : std::vector<std::int16_t>(static_cast<std::size_t>(count) * kSamplesOfSector);
        fetched_ = sector;
    }
    return sectors_.data() + static_cast<std::size_t>(sector - fetched_) * kSamplesOfSector;
}

std::size_t CdSound::read(float* samples, std::size_t count) {
    std::size_t done = 0;
    while (done < count && position_ < frames() && !stopping && !abandoned) {
        const std::int16_t* const sector = fetch(first_ + position_ / kCdFramesPerSector);
        const auto offset = static_cast<std::size_t>(position_ % kCdFramesPerSector);
        const std::size_t piece = std::min(count - done, kCdFramesPerSector - offset);
        for (std::size_t i = 0; i < piece * 2; ++i)
            samples[done * 2 + i] = static_cast<float>(sector[offset * 2 + i]) / kFullScale;
        done += piece;
        position_ += static_cast<std::int64_t>(piece);
    }
    return done;
}

void CdSound::seek(std::int64_t frame) { position_ = std::clamp<std::int64_t>(frame, 0, frames()); }

std::int64_t CdSound::fromTmsf(std::int32_t packed) const {
    return (sectorOf(disc_->tracks(), packed) - first_) * kCdFramesPerSector;
}

std::int32_t CdSound::toTmsf(std::int64_t frame) const {
    return tmsfOf(disc_->tracks(), first_ + frame / kCdFramesPerSector);
}

std::int32_t CdSound::trackLength(int track) const {
    for (const CdTrack& candidate : disc_->tracks()) {
        if (candidate.number == track) return packLength(candidate.length);
    }
    return 0;
}

OpenedSound openCdSound(const std::string& place) {
    struct Found {
        std::string place, reason;
        std::shared_ptr<CdDisc> disc;
    };
    const auto found = DriveCalls::all().ask<Found>(place, DriveCalls::kLongPatience, [place] {
        Found here{discPlace(place), "There is no disc drive", nullptr};
        if (here.place.empty()) return here;
        OpenedDisc opened = openDisc(here.place);
        here.disc = std::move(opened.disc);
        here.reason = std::move(opened.reason);
        return here;
    });
    if (!found) return {nullptr, DriveCalls::kNoAnswer};
    if (!found->disc) return {nullptr, found->reason};
    return {std::make_unique<CdSound>(found->disc, found->place), ""};
}

}  // namespace corvane
