// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/cd_sound.h"

#include <algorithm>

#include "desktop/media/cd_folder.h"

namespace corvane {

namespace {

constexpr float kFullScale = 32768.0F;

}  // namespace

CdSound::CdSound(std::unique_ptr<CdDisc> disc)
    : disc_(std::move(disc)),
      first_(disc_->tracks().front().start),
      last_(disc_->tracks().back().start + disc_->tracks().back().length) {}

void CdSound::fetch(std::int64_t sector) {
    if (sector == fetched_) return;
    fetched_ = sector;
    const CdTrack* const track = trackAt(disc_->tracks(), sector);
    const bool sounds = track->audio && sector < track->start + track->length;
    if (!sounds || !disc_->readSector(sector, sector_.data())) sector_.fill(0);
}

std::size_t CdSound::read(float* samples, std::size_t count) {
    std::size_t done = 0;
    while (done < count && position_ < frames() && !stopping) {
        fetch(first_ + position_ / kCdFramesPerSector);
        const auto offset = static_cast<std::size_t>(position_ % kCdFramesPerSector);
        const std::size_t piece = std::min(count - done, kCdFramesPerSector - offset);
        for (std::size_t i = 0; i < piece * 2; ++i)
            samples[done * 2 + i] = static_cast<float>(sector_[offset * 2 + i]) / kFullScale;
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
    const std::string found = discPlace(place);
    if (found.empty()) return {nullptr, "There is no disc drive"};
    OpenedDisc opened = openDisc(found);
    if (!opened.disc) return {nullptr, opened.reason};
    return {std::make_unique<CdSound>(std::move(opened.disc)), ""};
}

}  // namespace corvane
