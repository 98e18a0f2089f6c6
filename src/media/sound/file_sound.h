// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "media/sound/av_input.h"
#include "media/sound/sound_backend.h"
#include "platform/sound_level.h"

struct SwrContext;

namespace corvane {

/// A sound file, decoded while it plays. Places are exact to the frame, also where the file says nothing of its length
/// or where its places are only estimated: such files are measured packet by packet.
class FileSound : public SoundBackend {
public:
    static OpenedSound open(const std::string& path, const Abandoned& flag = std::make_shared<std::atomic<bool>>(false),
                            SoundLevel level = SoundLevel::AsRecorded);
    /// The same of a file that is open already.
    static OpenedSound open(std::unique_ptr<const DriveFile> file, const Abandoned& flag,
                            SoundLevel level = SoundLevel::AsRecorded);
    ~FileSound() override;

    PcmFormat format() const override { return format_; }
    std::int64_t frames() const override { return frames_; }
    std::size_t read(float* samples, std::size_t count) override;
    void seek(std::int64_t frame) override;
    void measure() override;
    bool lengthKnown() const override { return known_; }

private:
    /// How a place is found.
    enum class Places {
        Stamped,  ///< the file's own time stamps are exact
        Indexed,  ///< packets are counted through the whole file, and found again by their place in it
        Counted   ///< only decoding from the start tells
    };
    struct Mark {
        std::int64_t byte;
        std::int64_t sample;  ///< counted from the first packet
    };

    FileSound(const Abandoned& flag, SoundLevel level) : SoundBackend(flag), level_(level) {}
    bool begin(std::string& reason);
    bool firstSound(std::string& reason);
    void takeLevel();  ///< by the tags: how loud it is to be, and its true ends
    void endOgg();
    void endEdited();
    void measureAll(AvInput& input);
    bool rewind();
    bool reopen();  ///< back to the very start
    void standAtStart();
    void choosePlaces();
    void estimateLength();
    bool fill();
    bool takeFrame();
    void convert(const AVFrame& frame);
    void silence(std::int64_t count);
    bool seekStamped(std::int64_t frame);
    bool seekIndexed(std::int64_t frame);
    void dropUntil(std::int64_t frame);
    void measureIndexed(AvInput& input);
    void measureStamped(AvInput& input);
    void measureCounted(AvInput& input);
    void settle(std::int64_t frames);
    std::int64_t toFrames(std::int64_t duration) const;
    std::int64_t packetFrames(const AVPacket& packet) const;
    std::int64_t fromSource(std::int64_t samples) const;
    std::int64_t mostFrames() const { return kMostSeconds * format_.rate; }

    std::unique_ptr<const DriveFile> file_;  ///< opened once; who reads it again reads the same
    PcmFormat format_;
    int sourceRate_ = 0;  ///< as the file has it; played at the nearest one that outputs take
    std::unique_ptr<AvInput> input_;
    SwrContext* resampler_ = nullptr;
    int resampledFormat_ = -1, resampledRate_ = 0, resampledChannels_ = 0;
    Places places_ = Places::Stamped;
    std::int64_t origin_ = 0;  ///< Stamped: time stamp of the first frame
    std::int64_t skip_ = 0;    ///< Indexed: decoder delay, dropped from the front; frames of ours
    std::int64_t lead_ = 0;    ///< samples of the file that its first packet asks to be dropped
    const SoundLevel level_;
    float factor_ = 1;  ///< by which the samples are multiplied
    AvInput::Edits edits_ = AvInput::Edits::Obeyed;
    bool wholeBlocks_ = false;  ///< the decoder leaves its last block whole; the stated length ends it
    std::vector<float> buffer_;
    std::size_t used_ = 0;        ///< samples of buffer_ already given
    std::int64_t at_ = 0;         ///< frame of the next sample of the buffer
    bool aligning_ = false;       ///< Stamped: the next decoded frame says where we are
    bool stampsCount_ = true;     ///< Stamped: the stamps of the packets read now can be trusted
    std::int64_t seekPage_ = -1;  ///< place of the first packet after a seek
    bool drained_ = false;

    std::atomic<std::int64_t> frames_{0};
    std::atomic<bool> known_{false};
    std::mutex mutex_;
    std::condition_variable measured_;
    bool isMeasured_ = false;
    std::vector<Mark> marks_;
};

}  // namespace corvane
