// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "media/discs/cd_disc.h"
#include "media/sound/sound_backend.h"

namespace corvane {

/// An audio disc as one sound: its sectors from the first track on. Data tracks and unreadable sectors are silent. It
/// ends where a disc has not answered in time, and where nothing could be read for ten seconds of it: it was taken out.
class CdSound : public SoundBackend {
public:
    /// `place`: where the disc is.
    explicit CdSound(std::shared_ptr<CdDisc> disc, std::string place = {},
                     Abandoned flag = std::make_shared<std::atomic<bool>>(false));
    ~CdSound() override;

    PcmFormat format() const override { return {kCdSampleRate, 2}; }
    std::int64_t frames() const override { return (last_ - first_) * kCdFramesPerSector; }
    std::size_t read(float* samples, std::size_t count) override;
    void seek(std::int64_t frame) override;

    std::int64_t fromTmsf(std::int32_t packed) const override;
    std::int32_t toTmsf(std::int64_t frame) const override;
    std::int32_t trackLength(int track) const override;

private:
    const std::int16_t* fetch(std::int64_t sector);
    bool fetchFrom(std::int64_t sector);

    std::shared_ptr<CdDisc> disc_;  ///< held by each question about it as well
    std::string place_;
    std::int64_t first_;           ///< first sector of the axis
    std::int64_t last_;            ///< one past its last sector
    std::int64_t position_ = 0;    ///< frames on the axis
    std::int64_t fetched_ = -1;    ///< the first sector held; -1 none
    std::int64_t unreadable_ = 0;  ///< sectors, one after the other, up to the last one held
    std::vector<std::int16_t> sectors_;
};

}  // namespace corvane
