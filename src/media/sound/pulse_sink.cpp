// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/pulse_sink.h"

#include <pulse/operation.h>

namespace corvane {

namespace {

constexpr int kOpenWaitMs = 500;

}  // namespace

PulseSink::PulseSink(PulseLink& link, PcmFormat format) : link_(link), format_(format) {}

std::unique_ptr<PulseSink> PulseSink::open(PulseLink& link, PcmFormat format) {
    if (!link.ready(kOpenWaitMs)) return nullptr;
    std::unique_ptr<PulseSink> sink(new PulseSink(link, format));
    {
        const PulseLink::Lock lock(link);
        pa_sample_spec spec;
        spec.format = PA_SAMPLE_FLOAT32NE;
        spec.rate = static_cast<std::uint32_t>(format.rate);
        spec.channels = static_cast<std::uint8_t>(format.channels);
        pa_channel_map map;
        pa_channel_map_init_extend(&map, spec.channels, PA_CHANNEL_MAP_WAVEEX);
        sink->stream_ = pa_stream_new(link.context(), "Corvane", &spec, &map);
        if (!sink->stream_) return nullptr;
        pa_stream_set_state_callback(
            sink->stream_, [](pa_stream*, void* self) { static_cast<PulseLink*>(self)->changed(); }, &link);
        const auto frame = static_cast<std::uint32_t>(pa_frame_size(&spec));
        pa_buffer_attr buffer;
        buffer.maxlength = static_cast<std::uint32_t>(-1);
        buffer.tlength = spec.rate * kHeldBySinkMs / 1000 * frame;
        buffer.prebuf = frame;
        buffer.minreq = static_cast<std::uint32_t>(-1);
        buffer.fragsize = static_cast<std::uint32_t>(-1);
        const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_START_CORKED | PA_STREAM_INTERPOLATE_TIMING |
                                                          PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_ADJUST_LATENCY);
        pa_stream_connect_playback(sink->stream_, nullptr, &buffer, flags, nullptr, nullptr);
    }
    const bool settled = link.waitFor(kOpenWaitMs, [&] {
        const pa_stream_state_t state = pa_stream_get_state(sink->stream_);
        return state == PA_STREAM_READY || !PA_STREAM_IS_GOOD(state);
    });
    return settled && sink->alive() ? std::move(sink) : nullptr;
}

PulseSink::~PulseSink() {
    if (!stream_) return;
    const PulseLink::Lock lock(link_);
    pa_stream_set_state_callback(stream_, nullptr, nullptr);
    pa_stream_disconnect(stream_);
    pa_stream_unref(stream_);
}

bool PulseSink::alive() {
    const PulseLink::Lock lock(link_);
    return pa_stream_get_state(stream_) == PA_STREAM_READY;
}

std::size_t PulseSink::writable() {
    const PulseLink::Lock lock(link_);
    const std::size_t bytes = pa_stream_writable_size(stream_);
    if (bytes == static_cast<std::size_t>(-1)) return 0;
    return bytes / (sizeof(float) * static_cast<std::size_t>(format_.channels));
}

void PulseSink::write(const float* samples, std::size_t frames) {
    const PulseLink::Lock lock(link_);
    pa_stream_write(stream_, samples, frames * sizeof(float) * static_cast<std::size_t>(format_.channels), nullptr, 0,
                    PA_SEEK_RELATIVE);
}

std::optional<double> PulseSink::pending() {
    const PulseLink::Lock lock(link_);
    pa_usec_t latency = 0;
    int negative = 0;
    if (pa_stream_get_latency(stream_, &latency, &negative) < 0) return std::nullopt;
    return negative ? 0 : static_cast<double>(latency) * format_.rate / 1e6;
}

void PulseSink::release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

void PulseSink::hold(bool held) {
    const PulseLink::Lock lock(link_);
    release(pa_stream_cork(stream_, held ? 1 : 0, nullptr, nullptr));
}

void PulseSink::flush() {
    const PulseLink::Lock lock(link_);
    release(pa_stream_flush(stream_, nullptr, nullptr));
}

}  // namespace corvane
