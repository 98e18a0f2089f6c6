// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/log.h>
#include <libavutil/mathematics.h>
#include <libswresample/swresample.h>
}

namespace corvane {

// The functions in use, by library.
#define CORVANE_AVFORMAT(X)      \
    X(avformat_alloc_context)    \
    X(avformat_open_input)       \
    X(avformat_find_stream_info) \
    X(avformat_close_input)      \
    X(av_find_best_stream)       \
    X(av_find_input_format)      \
    X(av_read_frame)             \
    X(av_seek_frame)             \
    X(avio_alloc_context)        \
    X(avio_context_free)         \
    X(avio_size)
#define CORVANE_AVCODEC(X)           \
    X(avcodec_find_decoder)          \
    X(avcodec_find_decoder_by_name)  \
    X(avcodec_alloc_context3)        \
    X(avcodec_free_context)          \
    X(avcodec_parameters_to_context) \
    X(avcodec_open2)                 \
    X(avcodec_send_packet)           \
    X(avcodec_receive_frame)         \
    X(avcodec_flush_buffers)         \
    X(av_packet_alloc)               \
    X(av_packet_free)                \
    X(av_packet_unref)               \
    X(av_packet_get_side_data)       \
    X(av_get_audio_frame_duration2)
#define CORVANE_AVUTIL(X)     \
    X(av_frame_alloc)         \
    X(av_frame_free)          \
    X(av_frame_get_side_data) \
    X(av_dict_get)            \
    X(av_dict_set)            \
    X(av_dict_free)           \
    X(av_strerror)            \
    X(av_version_info)        \
    X(av_rescale)             \
    X(av_rescale_q)           \
    X(av_log_set_level)       \
    X(av_max_alloc)           \
    X(av_malloc)              \
    X(av_free)                \
    X(av_channel_layout_default)
#define CORVANE_SWRESAMPLE(X) \
    X(swr_alloc_set_opts2)    \
    X(swr_init)               \
    X(swr_free)               \
    X(swr_get_out_samples)    \
    X(swr_convert)

/// The decoding libraries, loaded when the first file is opened: with all that they bring they would cost a third of an
/// idle panel's memory, and time at every start.
struct AvLibrary {
#define CORVANE_DECLARE(name) decltype(&::name) name = nullptr;
    CORVANE_AVFORMAT(CORVANE_DECLARE)
    CORVANE_AVCODEC(CORVANE_DECLARE)
    CORVANE_AVUTIL(CORVANE_DECLARE)
    CORVANE_SWRESAMPLE(CORVANE_DECLARE)
#undef CORVANE_DECLARE
};

/// Loads the libraries at the first call, and tries again while it could not; any thread. False: they are not there.
bool loadAv();
/// True once they are loaded; loads nothing.
bool avIsLoaded();
/// Their functions, after loadAv() succeeded.
const AvLibrary& av();

}  // namespace corvane
