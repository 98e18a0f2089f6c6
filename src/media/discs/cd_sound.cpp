// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_sound.h"

#include <algorithm>

#include "drives/drive_calls.h"
#include "media/discs/cd_folder.h"

namespace corvane {

namespace {

constexpr float kFullScale = 32768.0F;
constexpr std::int64_t kSectorsAtOnce = 10;  ///< asked for together: an eighth of a second
constexpr std::int64_t kMostUnreadable = std::int64_t{10} * kCdSectorsPerSecond;
constexpr std::size_t kSamplesOfSector = std::size_t{kCdFramesPerSector} * 2;

struct Sectors {
    std::vector<std::int16_t> samples;
    std::int64_t unreadable = 0;  ///< behind the last one that could be read
    bool anyReadable = false;
};

/// Sounds of the sectors one after the other; silence where they are data or unreadable.
Sectors readSectors(CdDisc& disc, std::int64_t first, std::int64_t count) {
    Sectors sectors{std::vector<std::int16_t>(static_cast<std::size_t>(count) * kSamplesOfSector)};
    for (std::int64_t i = 0; i < count; ++i) {
        const CdTrack* const track = trackAt(disc.tracks(), first + i);
        if (!track->audio || first + i >= track->start + track->length) continue;
        std::int16_t* const sector = sectors.samples.data() + static_cast<std::size_t>(i) * kSamplesOfSector;
        if (disc.readSector(first + i, sector)) {
            sectors.unreadable = 0;
            sectors.anyReadable = true;
        } else {
            ++sectors.unreadable;
            std::fill_n(sector, kSamplesOfSector, std::int16_t{0});
        }
    }
    return sectors;
}

}  // namespace

CdSound::CdSound(std::shared_ptr<CdDisc> disc, std::string place, Abandoned flag)
    : SoundBackend(std::move(flag)),
      disc_(std::move(disc)),
      place_(std::move(place)),
      first_(disc_->tracks().front().start),
      last_(disc_->tracks().back().start + disc_->tracks().back().length) {}

CdSound::~CdSound() { DriveCalls::release(std::move(disc_)); }

/// The samples of a sector; null when the disc has gone.
const std::int16_t* CdSound::fetch(std::int64_t sector) {
    const auto held = static_cast<std::int64_t>(sectors_.size() / kSamplesOfSector);
    const bool isHeld = fetched_ >= 0 && sector >= fetched_ && sector < fetched_ + held;
    if (!isHeld && !fetchFrom(sector)) return nullptr;
    return sectors_.data() + static_cast<std::size_t>(sector - fetched_) * kSamplesOfSector;
}

bool CdSound::fetchFrom(std::int64_t sector) {
    const std::int64_t count = std::min(kSectorsAtOnce, last_ - sector);
    auto read =
        DriveCalls::all().ask<Sectors>(place_, {DriveCalls::kLongPatience, &abandoned},
                                       [disc = disc_, sector, count] { return readSectors(*disc, sector, count); });
    fetched_ = -1;
    if (!read) return false;
    unreadable_ = (read->anyReadable ? 0 : unreadable_) + read->unreadable;
    if (unreadable_ > kMostUnreadable) return false;
    sectors_ = std::move(read->samples);
    fetched_ = sector;
    return true;
}

std::size_t CdSound::read(float* samples, std::size_t count) {
    std::size_t done = 0;
    while (done < count && position_ < frames() && !stopping && !abandoned) {
        const std::int16_t* const sector = fetch(first_ + position_ / kCdFramesPerSector);
        if (!sector) break;
        const auto offset = static_cast<std::size_t>(position_ % kCdFramesPerSector);
        const std::size_t piece = std::min(count - done, kCdFramesPerSector - offset);
        for (std::size_t i = 0; i < piece * 2; ++i)
            samples[done * 2 + i] = static_cast<float>(sector[offset * 2 + i]) / kFullScale;
        done += piece;
        position_ += static_cast<std::int64_t>(piece);
    }
    return done;
}

void CdSound::seek(std::int64_t frame) {
    position_ = std::clamp<std::int64_t>(frame, 0, frames());
    unreadable_ = 0;
}

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

OpenedSound openCdSound(const std::string& entry, const Abandoned& flag) {
    const auto place = DriveCalls::all().ask<std::string>(entry, {DriveCalls::kLongPatience, flag.get()},
                                                          [entry] { return discPlace(entry); });
    if (!place) return {nullptr, DriveCalls::kNoAnswer};
    if (place->empty()) return {nullptr, "There is no disc drive"};
    OpenedDisc opened = openDisc(*place, flag);
    if (!opened.disc) return {nullptr, std::move(opened.reason)};
    return {std::make_unique<CdSound>(std::move(opened.disc), *place, flag), ""};
}

}  // namespace corvane
