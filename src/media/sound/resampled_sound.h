// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "media/sound/sound_backend.h"

struct SwrContext;

namespace corvane {

/// Another sound in stereo at another rate: its frame n is what the other one holds at the same time.
class ResampledSound : public SoundBackend {
public:
    /// rate: frames a second, at least 1. flag: the other one's, too.
    ResampledSound(std::unique_ptr<SoundBackend> sound, int rate,
                   Abandoned flag = std::make_shared<std::atomic<bool>>(false));
    ~ResampledSound() override;

    PcmFormat format() const override { return {rate_, kChannels}; }
    std::int64_t frames() const override;
    std::size_t read(float* samples, std::size_t count) override;
    void seek(std::int64_t frame) override;
    void measure() override { sound_->measure(); }
    bool lengthKnown() const override { return sound_->lengthKnown(); }

private:
    static constexpr int kChannels = 2;
    void restart();
    bool fill();

    std::unique_ptr<SoundBackend> sound_;
    int rate_;
    std::int64_t from_, to_;  ///< so many of its frames last as long as so many of ours
    SwrContext* resampler_ = nullptr;
    std::vector<float> read_, buffer_;
    std::size_t used_ = 0;  ///< samples of the buffer already given
    bool drained_ = false;
};

}  // namespace corvane
