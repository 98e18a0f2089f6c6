// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/av_input.h"

extern "C" {
#include <libavutil/intreadwrite.h>
}

#include <sstream>

#include "drives/spare_descriptors.h"
#include "media/sound/av_kinds.h"

namespace corvane {

namespace {

// Formats that hold sound in the file itself. Play lists, descriptions of streams and formats that name further files
// (hls, dash, concat, sdp, imf, ...) are not among them.
constexpr const char* kFormats =
    "wav,w64,aiff,au,caf,voc,mp3,aac,ac3,eac3,dts,flac,ogg,mov,matroska,asf,rm,ape,wv,tta,amr,avi,mpeg,mpegts,"
    "mpegvideo,"
    "flv,mpc,mpc8,tak,dsf,iff,ircam,sox,nut,truehd,gsm,shn,paf,nistsphere,pvf,vqf,xwma,oma,loas";

std::string words(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av().av_strerror(error, text, sizeof text);
    return text;
}

int interrupted(void* cancelled) { return static_cast<const std::atomic<bool>*>(cancelled)->load() ? 1 : 0; }

}  // namespace

int AvInput::openContainer(AVFormatContext*& container, AvSource& source, const std::atomic<bool>* cancelled,
                           Edits edits) {
    container = av().avformat_alloc_context();
    if (!container) return AVERROR(ENOMEM);
    if (cancelled) {
        container->interrupt_callback.callback = interrupted;
        container->interrupt_callback.opaque = const_cast<std::atomic<bool>*>(cancelled);
    }
    source.feed(*container);
    AVDictionary* options = nullptr;
    av().av_dict_set(&options, "protocol_whitelist", "file", 0);
    const char* const named = formatByName(source.file().path());
    av().av_dict_set(&options, "format_whitelist", named != nullptr ? named : kFormats, 0);
    if (edits == Edits::BeginAlone) av().av_dict_set(&options, "advanced_editlist", "0", 0);
    // The prefix keeps a name such as "http:..." a file name.
    const std::string name = "file:" + source.file().path();
    const int error = av().avformat_open_input(&container, name.c_str(), nullptr, &options);
    av().av_dict_free(&options);
    return error;
}

std::unique_ptr<AvInput> AvInput::open(std::unique_ptr<DriveFile> file, const std::atomic<bool>* cancelled,
                                       std::string& reason, Edits edits) {
    if (!loadAv()) {
        reason = SpareDescriptors::reason("The libraries that decode sound are not installed.");
        return nullptr;
    }
    std::unique_ptr<AvInput> input(new AvInput);
    input->source_ = AvSource::of(std::move(file), cancelled);
    if (!input->source_) return nullptr;
    const DriveFile& source = input->source_->file();
    if (source.size() == 0) {
        reason = "The file is empty.";
        return nullptr;
    }
    input->packet_ = av().av_packet_alloc();
    input->frame_ = av().av_frame_alloc();
    if (!input->packet_ || !input->frame_) return nullptr;
    int error = openContainer(input->file_, *input->source_, cancelled, edits);
    if (error >= 0) error = av().avformat_find_stream_info(input->file_, nullptr);
    if (input->source_->tellsTooMuchBeside()) {
        reason = "The file tells too much beside its sound.";
        return nullptr;
    }
    if (error < 0) {
        reason = source.failure().empty() ? "The file holds no sound that can be played (" + words(error) + ")."
                                          : source.failure();
        return nullptr;
    }
    const int best = av().av_find_best_stream(input->file_, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (best < 0) {
        reason = "The file holds no sound.";
        return nullptr;
    }
    for (unsigned i = 0; i < input->file_->nb_streams; ++i) input->file_->streams[i]->discard = AVDISCARD_ALL;
    input->stream_ = input->file_->streams[best];
    input->stream_->discard = AVDISCARD_DEFAULT;
    return input;
}

AvInput::~AvInput() {
    av().avcodec_free_context(&decoder_);
    av().avformat_close_input(&file_);
    av().av_packet_free(&packet_);
    av().av_frame_free(&frame_);
}

bool AvInput::startDecoder(bool manualSkip) {
    av().avcodec_free_context(&decoder_);
    const AVCodec* codec = av().avcodec_find_decoder(stream_->codecpar->codec_id);
    decoder_ = codec ? av().avcodec_alloc_context3(codec) : nullptr;
    if (!decoder_ || av().avcodec_parameters_to_context(decoder_, stream_->codecpar) < 0) return false;
    decoder_->pkt_timebase = stream_->time_base;
    decoder_->thread_count = 1;
    if (manualSkip) decoder_->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    return av().avcodec_open2(decoder_, codec, nullptr) >= 0;
}

const AVPacket* AvInput::nextPacket() {
    for (;;) {
        av().av_packet_unref(packet_);
        if (av().av_read_frame(file_, packet_) < 0) return nullptr;
        if (packet_->stream_index == stream_->index) return packet_;
    }
}

bool AvInput::send(const AVPacket* packet) { return av().avcodec_send_packet(decoder_, packet) >= 0; }

const AVFrame* AvInput::nextFrame() {
    return av().avcodec_receive_frame(decoder_, frame_) >= 0 && frame_->nb_samples > 0 ? frame_ : nullptr;
}

void AvInput::forgetDecoded() { av().avcodec_flush_buffers(decoder_); }

bool AvInput::seekByte(std::int64_t position) {
    return av().av_seek_frame(file_, stream_->index, position, AVSEEK_FLAG_BYTE) >= 0;
}

bool AvInput::seekTime(std::int64_t timestamp) {
    return av().av_seek_frame(file_, stream_->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

void AvInput::eachTag(const std::function<void(const char* name, const char* value)>& take) const {
    for (const AVDictionary* const tags : {file_->metadata, stream_->metadata}) {
        for (const AVDictionaryEntry* tag = nullptr; (tag = av().av_dict_get(tags, "", tag, AV_DICT_IGNORE_SUFFIX));)
            take(tag->key, tag->value);
    }
}

LeftOut leftOutOf(const AVPacket& packet) {
    size_t size = 0;
    const std::uint8_t* data = av().av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &size);
    if (!data || size < 8) return {};
    return {AV_RL32(data), AV_RL32(data + 4)};
}

LeftOut leftOutOf(const AVFrame& frame) {
    const AVFrameSideData* const side = av().av_frame_get_side_data(&frame, AV_FRAME_DATA_SKIP_SAMPLES);
    if (side == nullptr || side->size < 8) return {};
    return {AV_RL32(side->data), AV_RL32(side->data + 4)};
}

bool AvInput::isFormat(const char* name) const {
    std::istringstream names(file_->iformat->name);
    for (std::string one; std::getline(names, one, ',');) {
        if (one == name) return true;
    }
    return false;
}

}  // namespace corvane
