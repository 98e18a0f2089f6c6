// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_duration.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include "media/sound/av_source.h"

namespace corvane {

namespace {

constexpr std::uintmax_t kCountedProgramBytes = 64U << 20U;
/// What is counted: nothing else is opened, as no format that names other files.
constexpr const char* kCounted = "mpeg,mpegvideo,m4v,h261,h263,h264,hevc,vc1,mp3,aac,ac3";
/// What says how long it is.
constexpr const char* kStating =
    "avi,mov,mp4,matroska,webm,asf,flv,mpegts,ogg,rm,mpeg,mpegvideo,m4v,h261,h263,h264,hevc,vc1,mp3,aac,ac3";

bool isCounted(std::string_view format) {
    for (std::string_view left = kCounted; !left.empty();) {
        const std::string_view one = left.substr(0, left.find(','));
        if (one == format) return true;
        left.remove_prefix(std::min(left.size(), one.size() + 1));
    }
    return false;
}

struct CloseInput {
    void operator()(AVFormatContext* input) const { av().avformat_close_input(&input); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av().av_packet_free(&packet); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

Input openInput(const std::string& path, AvSource& source, const char* formats) {
    AVFormatContext* context = av().avformat_alloc_context();
    if (context == nullptr) return nullptr;
    source.feed(*context);
    AVDictionary* options = nullptr;
    av().av_dict_set(&options, "protocol_whitelist", "file", 0);
    av().av_dict_set(&options, "format_whitelist", formats, 0);
    const int failed = av().avformat_open_input(&context, ("file:" + path).c_str(), nullptr, &options);
    av().av_dict_free(&options);
    if (failed < 0) return nullptr;  // the context is gone as well
    Input input(context);
    return av().avformat_find_stream_info(context, nullptr) < 0 ? nullptr : std::move(input);
}

/// Seconds that one packet lasts: as the demuxer says, else one frame at the stream's rate.
double lasts(const AVStream& stream, const AVPacket& packet) {
    if (packet.duration > 0) return static_cast<double>(packet.duration) * av_q2d(stream.time_base);
    const AVRational rate = stream.avg_frame_rate.num > 0 ? stream.avg_frame_rate : stream.r_frame_rate;
    return rate.num > 0 && rate.den > 0 ? av_q2d(av_inv_q(rate)) : 0;
}

/// Seconds from the file's start to the stream's.
double startsAt(const AVFormatContext& input, const AVStream& stream) {
    if (stream.start_time == AV_NOPTS_VALUE || input.start_time == AV_NOPTS_VALUE) return 0;
    const double start = static_cast<double>(stream.start_time) * av_q2d(stream.time_base);
    return std::max(start - static_cast<double>(input.start_time) / AV_TIME_BASE, 0.0);
}

}  // namespace

bool lengthIsGuessed(const std::string& format, std::uintmax_t bytes) {
    if (format == "mpeg") return bytes <= kCountedProgramBytes;
    return isCounted(format);
}

std::optional<double> statedLength(const std::string& path, const std::atomic<bool>& stop) {
    if (!loadAv()) return std::nullopt;
    std::string reason;
    const std::unique_ptr<AvSource> source = AvSource::open(path, &stop, reason);
    if (!source) return std::nullopt;
    const Input input = openInput(path, *source, kStating);
    if (!input || stop || !source->file().failure().empty()) return std::nullopt;
    const std::int64_t bytes = std::max<std::int64_t>(source->file().size(), 0);
    if (lengthIsGuessed(input->iformat->name, static_cast<std::uintmax_t>(bytes))) {
        constexpr std::int64_t kMostCounted = std::int64_t{64} << 20U;
        return bytes <= kMostCounted ? countedLength(path, stop) : std::nullopt;
    }
    if (input->duration == AV_NOPTS_VALUE || input->duration <= 0) return std::nullopt;
    return static_cast<double>(input->duration) / AV_TIME_BASE;
}

std::optional<double> countedLength(const std::string& path, const std::atomic<bool>& stop) {
    if (!loadAv()) return std::nullopt;
    std::string reason;
    const std::unique_ptr<AvSource> source = AvSource::open(path, &stop, reason);
    if (!source) return std::nullopt;
    const Input input = openInput(path, *source, kCounted);
    const std::unique_ptr<AVPacket, FreePacket> packet(av().av_packet_alloc());
    if (!input || !packet) return std::nullopt;
    source->opened();
    std::vector<double> seconds(input->nb_streams, 0.0);
    while (!stop && av().av_read_frame(input.get(), packet.get()) >= 0) {
        const auto index = static_cast<std::size_t>(packet->stream_index);
        if (index < seconds.size()) seconds[index] += lasts(*input->streams[index], *packet);
        av().av_packet_unref(packet.get());
    }
    if (stop || !source->file().failure().empty()) return std::nullopt;
    double longest = 0;
    for (std::size_t i = 0; i < seconds.size(); ++i) {
        if (seconds[i] > 0) longest = std::max(longest, seconds[i] + startsAt(*input, *input->streams[i]));
    }
    return longest > 0 ? std::optional(longest) : std::nullopt;
}

}  // namespace corvane
