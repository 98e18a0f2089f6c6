// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/resampled_sound.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "media/sound/av_library.h"

namespace corvane {

namespace {
constexpr std::size_t kPiece = 1024;   ///< frames converted together
constexpr std::int64_t kLeadIn = 256;  ///< frames converted and dropped before a place, so that it sounds as it would
}  // namespace

ResampledSound::ResampledSound(std::unique_ptr<SoundBackend> sound, int rate, Abandoned flag)
    : SoundBackend(std::move(flag)), sound_(std::move(sound)), rate_(rate) {
    const std::int64_t common = std::gcd(sound_->format().rate, rate_);
    from_ = sound_->format().rate / common;
    to_ = rate_ / common;
    restart();
}

ResampledSound::~ResampledSound() { av().swr_free(&resampler_); }

std::int64_t ResampledSound::frames() const {
    const std::int64_t frames = sound_->frames();
    return frames / from_ * to_ + (frames % from_ * to_ + from_ - 1) / from_;
}

void ResampledSound::restart() {
    AVChannelLayout from, to;
    av().av_channel_layout_default(&from, sound_->format().channels);
    av().av_channel_layout_default(&to, kChannels);
    av().swr_free(&resampler_);
    av().swr_alloc_set_opts2(&resampler_, &to, AV_SAMPLE_FMT_FLT, rate_, &from, AV_SAMPLE_FMT_FLT,
                             sound_->format().rate, 0, nullptr);
    if (resampler_ != nullptr && av().swr_init(resampler_) < 0) av().swr_free(&resampler_);
    buffer_.clear();
    used_ = 0;
    drained_ = false;
}

/// Converts on until the buffer holds something. False: the end.
bool ResampledSound::fill() {
    read_.resize(kPiece * static_cast<std::size_t>(sound_->format().channels));
    buffer_.clear();
    used_ = 0;
    while (resampler_ != nullptr && buffer_.empty() && !drained_) {
        const auto got = static_cast<int>(sound_->read(read_.data(), kPiece));
        drained_ = got == 0;
        const int room = std::max(0, av().swr_get_out_samples(resampler_, got));
        buffer_.resize(static_cast<std::size_t>(room) * kChannels);
        auto* out = reinterpret_cast<std::uint8_t*>(buffer_.data());
        const auto* in = reinterpret_cast<const std::uint8_t*>(read_.data());
        const int made = av().swr_convert(resampler_, &out, room, drained_ ? nullptr : &in, got);
        buffer_.resize(static_cast<std::size_t>(std::max(0, made)) * kChannels);
    }
    return !buffer_.empty();
}

std::size_t ResampledSound::read(float* samples, std::size_t count) {
    std::size_t given = 0;
    while (given < count && !abandoned && (used_ < buffer_.size() || fill())) {
        const std::size_t frames = std::min(count - given, (buffer_.size() - used_) / kChannels);
        std::copy_n(buffer_.data() + used_, frames * kChannels, samples + given * kChannels);
        used_ += frames * kChannels;
        given += frames;
    }
    return given;
}

void ResampledSound::seek(std::int64_t frame) {
    frame = std::max<std::int64_t>(0, frame);
    // Where both have a frame at the same time.
    const std::int64_t step = std::max<std::int64_t>(0, (frame - kLeadIn) / to_);
    sound_->seek(step * from_);
    restart();
    std::int64_t left = frame - step * to_;
    while (left > 0 && !abandoned && (used_ < buffer_.size() || fill())) {
        const auto frames =
            std::min<std::int64_t>(left, static_cast<std::int64_t>((buffer_.size() - used_) / kChannels));
        used_ += static_cast<std::size_t>(frames) * kChannels;
        left -= frames;
    }
}

}  // namespace corvane
