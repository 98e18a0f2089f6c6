// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "media/sound/av_library.h"
#include "media/sound/av_source.h"

namespace corvane {

/// A local file of sound, opened for reading packets and, when asked, decoding them. Nothing but the file itself is
/// ever opened: other protocols, play lists and formats that name other files are refused.
class AvInput {
public:
    /// What the list of edits of a QuickTime file does. Its lengths are rounded, to a millisecond as a rule.
    enum class Edits {
        Obeyed,     ///< what it leaves out is never read
        BeginAlone  ///< says where the sound begins; the end is that of all that there is
    };
    /// Empty: not playable, and `reason` says why, in words. `cancelled` makes long reads give up; it
    /// outlives the input.
    static std::unique_ptr<AvInput> open(std::unique_ptr<DriveFile> file, const std::atomic<bool>* cancelled,
                                         std::string& reason, Edits edits = Edits::Obeyed);
    ~AvInput();
    AvInput(const AvInput&) = delete;
    AvInput& operator=(const AvInput&) = delete;

    /// Starts the decoder. `manualSkip`: encoder delay is left in.
    bool startDecoder(bool manualSkip);
    /// The next packet of the sound, unreferenced by the next call; nullptr at the end.
    const AVPacket* nextPacket();
    /// Decodes the packet (nullptr: what is left); frames come from nextFrame().
    bool send(const AVPacket* packet);
    const AVFrame* nextFrame();  ///< nullptr: a packet is wanted, or the end was reached
    void forgetDecoded();        ///< after a seek
    bool seekByte(std::int64_t position);
    bool seekTime(std::int64_t timestamp);  ///< in the stream's time base; at or before it

    void opened() { source_->opened(); }  ///< its sound has been found
    AVFormatContext& file() const { return *file_; }
    AVStream& stream() const { return *stream_; }
    const AVCodecParameters& codec() const { return *stream_->codecpar; }
    bool isFormat(const char* name) const;  ///< one of the demuxer's names
    /// Each tag of the file, then of its sound: what it is called and says.
    void eachTag(const std::function<void(const char* name, const char* value)>& take) const;

    /// Opens what holds sound in a file, by the formats that are known for that; the caller closes it, and the source
    /// outlives it. Below 0: the libraries' error, and nothing is open. Loads nothing.
    static int openContainer(AVFormatContext*& container, AvSource& source, const std::atomic<bool>* cancelled,
                             Edits edits = Edits::Obeyed);

private:
    AvInput() = default;

    std::unique_ptr<AvSource> source_;  ///< outlives what reads it
    AVFormatContext* file_ = nullptr;
    AVStream* stream_ = nullptr;
    AVCodecContext* decoder_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
};

/// Samples that a packet asks to be left out before and behind it.
struct LeftOut {
    std::int64_t start = 0, end = 0;
};
LeftOut leftOutOf(const AVPacket& packet);
/// The same of a frame, of a decoder that leaves out nothing itself.
LeftOut leftOutOf(const AVFrame& frame);

}  // namespace corvane
