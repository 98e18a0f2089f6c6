// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/file_sound.h"

#include <algorithm>
#include <chrono>

#include "media/sound/saturate.h"

namespace corvane {

namespace {

constexpr int kMaxChannels = 8;
constexpr int kLeastRate = 1'000, kMostRate = 192'000;              ///< played; others are resampled
constexpr int kLeastSourceRate = 100, kMostSourceRate = 1'536'000;  ///< read
constexpr int kMostOfFrame = 2'000'000;  ///< frames: a decoded one that gives more is dropped
constexpr int kPatience = 2000;          ///< packets without sound at the start before a file counts as damaged
constexpr double kLeadInSeconds = 0.25;  ///< decoded and dropped before a place, so that the decoder has settled
constexpr double kLeadInPages = 2.5;     ///< the same where a page of about a second cannot be used
constexpr std::size_t kMarkEvery = 8;    ///< packets; more where a file has many
constexpr std::size_t kMostMarks = std::size_t{1} << 18U;
constexpr std::int64_t kSlack = 4096;  ///< frames by which a stated length may differ from the counted packets

bool pcm(AVCodecID codec) { return codec >= AV_CODEC_ID_FIRST_AUDIO && codec < AV_CODEC_ID_ADPCM_IMA_QT; }

bool makesSense(int rate) { return rate >= kLeastSourceRate && rate <= kMostSourceRate; }

}  // namespace

OpenedSound FileSound::open(const std::string& path, const Abandoned& flag, SoundLevel level) {
    std::string reason;
    auto file = DriveFile::open(path, {DriveCalls::kLongPatience, flag.get()}, reason);
    return file ? open(std::move(file), flag, level) : OpenedSound{nullptr, std::move(reason)};
}

OpenedSound FileSound::open(std::unique_ptr<const DriveFile> file, const Abandoned& flag, SoundLevel level) {
    OpenedSound opened;
    std::unique_ptr<FileSound> sound(new FileSound(flag, level));
    sound->file_ = std::move(file);
    sound->input_ = AvInput::open(sound->file_->again(), &sound->abandoned, opened.reason);
    if (sound->input_ && sound->begin(opened.reason)) opened.sound = std::move(sound);
    return opened;
}

FileSound::~FileSound() {
    if (resampler_) av().swr_free(&resampler_);
}

std::int64_t FileSound::toFrames(std::int64_t duration) const {
    return av().av_rescale_q(duration, input_->stream().time_base, AVRational{1, format_.rate});
}

void FileSound::choosePlaces() {
    if (input_->isFormat("rm")) {
        places_ = Places::Counted;
    } else if (!pcm(input_->codec().codec_id) &&
               (input_->isFormat("mp3") || input_->isFormat("aac") || input_->isFormat("ac3") ||
                input_->isFormat("eac3") || input_->isFormat("dts") || input_->isFormat("wav") ||
                input_->isFormat("w64") || input_->isFormat("aiff") || input_->isFormat("au"))) {
        places_ = Places::Indexed;
    }
}

void FileSound::estimateLength() {
    const AVStream& stream = input_->stream();
    std::int64_t frames = 0;
    if (stream.duration > 0) {
        frames = toFrames(stream.duration);
    } else if (input_->file().duration > 0) {
        frames = av().av_rescale_q(input_->file().duration, AVRational{1, AV_TIME_BASE}, AVRational{1, format_.rate});
    }
    const bool guessed = input_->file().duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    frames_ = std::clamp<std::int64_t>(saturatedDifference(frames, skip_), 0, mostFrames());
    known_ = frames > 0 && !guessed && places_ != Places::Counted;
}

/// Decodes the first sound: only that tells the true rate, and that there is something to hear.
bool FileSound::begin(std::string& reason) {
    choosePlaces();
    if (!firstSound(reason)) return false;
    if (level_ != SoundLevel::AsRecorded) takeLevel();
    input_->opened();
    reason.clear();
    return rewind() || reopen();
}

bool FileSound::firstSound(std::string& reason) {
    reason = "The file holds no sound that can be decoded.";
    if (!input_->startDecoder(places_ == Places::Indexed)) return false;
    const AVFrame* frame = nullptr;
    std::int64_t firstByte = -1;
    for (int i = 0; i < kPatience && !frame; ++i) {
        const AVPacket* packet = input_->nextPacket();
        if (packet && firstByte < 0) {
            firstByte = packet->pos;
            lead_ = leftOutOf(*packet).start;
            skip_ = places_ == Places::Indexed ? lead_ : 0;
        }
        input_->send(packet);
        frame = input_->nextFrame();
        if (!packet && !frame) return false;
    }
    if (!frame) return false;
    sourceRate_ = frame->sample_rate;
    if (!makesSense(sourceRate_)) return reason = "Its sample rate makes no sense.", false;
    format_ = {std::clamp(sourceRate_, kLeastRate, kMostRate),
               std::clamp(frame->ch_layout.nb_channels, 1, kMaxChannels)};
    skip_ = fromSource(skip_);
    convert(*frame);
    if (!resampler_) return reason = "Its channels cannot be mixed.", false;
    av().swr_free(&resampler_);  // it holds the end of what was converted
    if (frame->best_effort_timestamp != AV_NOPTS_VALUE) origin_ = frame->best_effort_timestamp;
    estimateLength();
    if (places_ == Places::Stamped && pcm(input_->codec().codec_id) && input_->codec().block_align > 0 &&
        input_->file().nb_streams == 1 && firstByte >= 0) {
        // A file cut short still states its full length.
        const std::int64_t bytes = std::max<std::int64_t>(av().avio_size(input_->file().pb) - firstByte, 0);
        const std::int64_t held = std::min(fromSource(bytes / input_->codec().block_align), mostFrames());
        frames_ = frames_ > 0 ? std::min<std::int64_t>(frames_, held) : held;
        known_ = true;
    }
    return true;
}

/// Samples of the file as frames of ours.
std::int64_t FileSound::fromSource(std::int64_t samples) const {
    if (sourceRate_ == format_.rate) return samples;
    return av().av_rescale(samples, format_.rate, sourceRate_);
}

/// Back to the start without opening the file again, which takes some ten milliseconds: where each sample has its own
/// place in the file, so that the way back is exact.
bool FileSound::rewind() {
    const bool exact = places_ == Places::Stamped && pcm(input_->codec().codec_id) &&
                       (input_->isFormat("wav") || input_->isFormat("aiff") || input_->isFormat("au"));
    if (!exact || !input_->seekTime(origin_)) return false;
    input_->forgetDecoded();
    standAtStart();
    return true;
}

bool FileSound::reopen() {
    std::string reason;
    std::unique_ptr<AvInput> input = AvInput::open(file_->again(), &abandoned, reason, edits_);
    if (!input || !input->startDecoder(places_ == Places::Indexed || wholeBlocks_)) return false;
    input_ = std::move(input);
    input_->opened();
    standAtStart();
    return true;
}

void FileSound::standAtStart() {
    buffer_.clear();
    used_ = 0;
    at_ = places_ == Places::Indexed ? -skip_ : 0;
    aligning_ = drained_ = false;
    stampsCount_ = true;
}

void FileSound::convert(const AVFrame& frame) {
    const int channels = std::max(1, frame.ch_layout.nb_channels);
    if (!makesSense(frame.sample_rate)) return;
    if (!resampler_ || frame.format != resampledFormat_ || frame.sample_rate != resampledRate_ ||
        channels != resampledChannels_) {
        AVChannelLayout from, to;
        av().av_channel_layout_default(&from, channels);
        av().av_channel_layout_default(&to, format_.channels);
        av().swr_free(&resampler_);
        av().swr_alloc_set_opts2(&resampler_, &to, AV_SAMPLE_FMT_FLT, format_.rate, &from,
                                 static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
        if (!resampler_ || av().swr_init(resampler_) < 0) return av().swr_free(&resampler_);
        resampledFormat_ = frame.format;
        resampledRate_ = frame.sample_rate;
        resampledChannels_ = channels;
    }
    const auto width = static_cast<std::size_t>(format_.channels);
    const int room = av().swr_get_out_samples(resampler_, frame.nb_samples);
    if (room > kMostOfFrame) return;
    const std::size_t before = buffer_.size();
    buffer_.resize(before + static_cast<std::size_t>(std::max(0, room)) * width);
    auto* out = reinterpret_cast<std::uint8_t*>(buffer_.data() + before);
    const int got = av().swr_convert(resampler_, &out, room, const_cast<const std::uint8_t**>(frame.extended_data),
                                     frame.nb_samples);
    buffer_.resize(before + static_cast<std::size_t>(std::max(0, got)) * width);
}

void FileSound::silence(std::int64_t count) {
    const std::int64_t most = static_cast<std::int64_t>(format_.rate) * 10;
    buffer_.resize(buffer_.size() + static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, most)) *
                                        static_cast<std::size_t>(format_.channels));
}

/// Goes on over frames that give nothing yet: short ones stay in the resampler at first.
bool FileSound::takeFrame() {
    const auto width = static_cast<std::size_t>(format_.channels);
    for (const std::size_t before = buffer_.size(); buffer_.size() == before;) {
        const AVFrame* frame = input_->nextFrame();
        while (frame && aligning_ && !stampsCount_) frame = input_->nextFrame();
        if (!frame) return false;
        const bool aligned = aligning_ && frame->best_effort_timestamp != AV_NOPTS_VALUE;
        if (aligned) {
            at_ = std::clamp(toFrames(saturatedDifference(frame->best_effort_timestamp, origin_)), -mostFrames(),
                             mostFrames());
            aligning_ = false;
        }
        convert(*frame);
        if (!wholeBlocks_) continue;
        // Newer decoders give the first block, which is no sound yet, and say so; older ones keep it.
        const auto silent =
            std::min(static_cast<std::size_t>(fromSource(leftOutOf(*frame).start)), (buffer_.size() - before) / width);
        const auto from = buffer_.begin() + static_cast<std::ptrdiff_t>(before);
        buffer_.erase(from, from + static_cast<std::ptrdiff_t>(silent * width));
        if (aligned) at_ += static_cast<std::int64_t>(silent);
    }
    return true;
}

std::int64_t FileSound::packetFrames(const AVPacket& packet) const {
    if (packet.duration > 0) return toFrames(packet.duration);
    return fromSource(
        std::max(0, av().av_get_audio_frame_duration2(const_cast<AVCodecParameters*>(&input_->codec()), packet.size)));
}

/// Decodes on until the buffer holds something. False: the end.
bool FileSound::fill() {
    buffer_.clear();
    used_ = 0;
    while (!drained_ && !stopping && !abandoned) {
        if (places_ != Places::Indexed && takeFrame()) return true;
        const AVPacket* packet = input_->nextPacket();
        drained_ = !packet;
        const std::int64_t length = packet ? packetFrames(*packet) : 0;
        if (packet && !stampsCount_) {
            if (seekPage_ < 0) seekPage_ = packet->pos;
            stampsCount_ = packet->pos != seekPage_;
        }
        input_->send(packet);
        if (places_ != Places::Indexed) continue;
        while (takeFrame()) continue;
        if (drained_) return !buffer_.empty();
        // A packet that could not be decoded keeps its time, or every later place would be wrong.
        const std::int64_t got = static_cast<std::int64_t>(buffer_.size() / static_cast<std::size_t>(format_.channels));
        if (got < length) silence(length - got);
        if (!buffer_.empty()) return true;
    }
    return takeFrame();
}

std::size_t FileSound::read(float* samples, std::size_t count) {
    const auto width = static_cast<std::size_t>(format_.channels);
    std::size_t given = 0;
    while (given < count) {
        if (used_ == buffer_.size() && !fill()) break;
        std::size_t frames = std::min(count - given, (buffer_.size() - used_) / width);
        if (at_ < 0) {  // decoder delay
            frames = std::min<std::size_t>((buffer_.size() - used_) / width, static_cast<std::size_t>(-at_));
        } else {
            if (known_) {
                const std::int64_t left = frames_ - at_;
                if (left <= 0) break;
                frames = std::min(frames, static_cast<std::size_t>(left));
            }
            float* const to = samples + given * width;
            std::copy_n(buffer_.data() + used_, frames * width, to);
            if (factor_ != 1) std::for_each_n(to, frames * width, [this](float& sample) { sample *= factor_; });
            given += frames;
        }
        used_ += frames * width;
        at_ += static_cast<std::int64_t>(frames);
        if (frames == 0) break;
    }
    return given;
}

bool FileSound::seekStamped(std::int64_t frame) {
    // In Ogg files the stamps of the page that a seek leads to are guesses; those of the next page are right.
    const bool pages = input_->isFormat("ogg");
    for (const double lead : {pages ? kLeadInPages : kLeadInSeconds, 5.0, 20.0}) {
        const std::int64_t target = frame - static_cast<std::int64_t>(lead * format_.rate);
        if (target <= 0) break;
        const std::int64_t stamp =
            saturatedSum(origin_, av().av_rescale_q(target, AVRational{1, format_.rate}, input_->stream().time_base));
        if (!input_->seekTime(stamp)) return false;
        input_->forgetDecoded();
        buffer_.clear();
        used_ = 0;
        drained_ = false;
        aligning_ = true;
        stampsCount_ = !pages;
        seekPage_ = -1;
        if (fill() && !aligning_ && at_ <= frame) return true;
    }
    return false;
}

bool FileSound::seekIndexed(std::int64_t frame) {
    const std::int64_t target = frame + skip_ - static_cast<std::int64_t>(kLeadInSeconds * format_.rate);
    Mark mark{};
    {
        std::unique_lock lock(mutex_);
        while (!isMeasured_ && !stopping && !abandoned) measured_.wait_for(lock, std::chrono::milliseconds(50));
        const auto after = std::upper_bound(marks_.begin(), marks_.end(), target,
                                            [](std::int64_t sample, const Mark& m) { return sample < m.sample; });
        if (after == marks_.begin()) return false;
        mark = *(after - 1);
    }
    if (mark.byte < 0 || !input_->seekByte(mark.byte)) return false;
    input_->forgetDecoded();
    buffer_.clear();
    used_ = 0;
    drained_ = false;
    at_ = mark.sample - skip_;
    return true;
}

void FileSound::dropUntil(std::int64_t frame) {
    const auto width = static_cast<std::size_t>(format_.channels);
    while (at_ < frame && !stopping && !abandoned) {
        if (used_ == buffer_.size() && !fill()) return;
        const std::size_t frames = std::min((buffer_.size() - used_) / width, static_cast<std::size_t>(frame - at_));
        used_ += frames * width;
        at_ += static_cast<std::int64_t>(frames);
    }
}

void FileSound::seek(std::int64_t frame) {
    frame = std::clamp<std::int64_t>(frame, 0, mostFrames());
    if (frame == at_ || (frame == 0 && at_ < 0)) return;
    // Going on from here is right everywhere; it is also the quicker way where it is not far.
    const bool ahead = frame > at_ && (places_ == Places::Counted || frame - at_ < format_.rate / 4);
    bool found = ahead;
    if (!found && places_ == Places::Stamped) found = seekStamped(frame);
    if (!found && places_ == Places::Indexed) found = seekIndexed(frame);
    if (!found && !rewind() && !reopen()) {
        drained_ = true;
        return;
    }
    dropUntil(frame);
}

void FileSound::settle(std::int64_t frames) {
    if (!abandoned && frames > 0) {
        frames_ = std::min(frames, mostFrames());
        known_ = true;
    }
}

void FileSound::measure() {
    const bool needed = places_ != Places::Stamped || !known_;
    std::string reason;
    const std::unique_ptr<AvInput> input = needed ? AvInput::open(file_->again(), &abandoned, reason) : nullptr;
    // Whoever waits for the marks goes on without them where there is no memory for them.
    struct Tell {
        FileSound& sound;
        ~Tell() {
            const std::lock_guard lock(sound.mutex_);
            sound.isMeasured_ = true;
            sound.measured_.notify_all();
        }
    } const tell{*this};
    if (!input) return;
    input->opened();
    measureAll(*input);
}

void FileSound::measureAll(AvInput& input) {
    switch (places_) {
        case Places::Indexed:
            return measureIndexed(input);
        case Places::Stamped:
            return measureStamped(input);
        case Places::Counted:
            return measureCounted(input);
    }
}

void FileSound::measureIndexed(AvInput& input) {
    std::vector<Mark> marks;
    std::int64_t samples = 0;
    std::int64_t cut = 0;
    std::size_t count = 0, every = kMarkEvery;
    const AVRational base = input.stream().time_base;
    while (const AVPacket* packet = input.nextPacket()) {
        if (count++ % every == 0) marks.push_back({packet->pos, samples});
        if (marks.size() == kMostMarks) {  // every second one is enough
            for (std::size_t i = 0; 2 * i < marks.size(); ++i) marks[i] = marks[2 * i];
            marks.resize(marks.size() / 2);
            every *= 2;
        }
        const std::int64_t lasts =
            packet->duration > 0
                ? av().av_rescale_q(packet->duration, base, AVRational{1, format_.rate})
                : fromSource(std::max(0, av().av_get_audio_frame_duration2(
                                             const_cast<AVCodecParameters*>(&input.codec()), packet->size)));
        samples = std::min(saturatedSum(samples, std::max<std::int64_t>(lasts, 0)), mostFrames());
        cut = fromSource(leftOutOf(*packet).end);
    }
    const std::lock_guard lock(mutex_);
    marks_ = std::move(marks);
    std::int64_t length = samples - skip_ - cut;
    // The last block may be filled up: then the stated length is the truer one.
    const bool blocks = !input.isFormat("mp3") && input.stream().duration > 0;
    const std::int64_t stated =
        blocks ? av().av_rescale_q(input.stream().duration, base, AVRational{1, format_.rate}) : 0;
    if (stated > length - kSlack && stated < length) length = stated;
    settle(length);
}

void FileSound::measureStamped(AvInput& input) {
    std::int64_t end = 0;
    while (const AVPacket* packet = input.nextPacket()) {
        if (packet->pts == AV_NOPTS_VALUE) continue;
        end = std::max(end, saturatedDifference(saturatedSum(packet->pts, packet->duration), origin_));
    }
    settle(av().av_rescale_q(end, input.stream().time_base, AVRational{1, format_.rate}));
}

void FileSound::measureCounted(AvInput& input) {
    if (!input.startDecoder(false)) return;
    std::int64_t samples = 0;
    for (bool more = true; more && !abandoned;) {
        const AVPacket* packet = input.nextPacket();
        more = packet != nullptr;
        input.send(packet);
        while (const AVFrame* frame = input.nextFrame())
            samples += av().av_rescale(frame->nb_samples, format_.rate, std::max(kLeastSourceRate, frame->sample_rate));
    }
    settle(samples);
}

}  // namespace corvane
