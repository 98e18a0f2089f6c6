// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/stream.h>

#include <memory>

#include "media/sound/pcm_sink.h"
#include "media/sound/pulse_link.h"

namespace corvane {

/// A stream of the sound server. Made held; it plays as soon as one frame is there.
class PulseSink : public PcmSink {
public:
    /// Empty when the server does not answer or refuses.
    static std::unique_ptr<PulseSink> open(PulseLink& link, PcmFormat format);
    ~PulseSink() override;

    bool alive() override;
    bool audible() const override { return true; }
    std::size_t writable() override;
    void write(const float* samples, std::size_t frames) override;
    std::optional<double> pending() override;
    void hold(bool held) override;
    void flush() override;

private:
    PulseSink(PulseLink& link, PcmFormat format);
    void release(pa_operation* operation);

    PulseLink& link_;
    PcmFormat format_;
    pa_stream* stream_ = nullptr;
};

}  // namespace corvane
