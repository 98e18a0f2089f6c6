// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/pulse_link.h"

namespace corvane {

using Steady = std::chrono::steady_clock;

PulseLink::PulseLink(const char* name) : name_(name), loop_(pa_threaded_mainloop_new()) {}

PulseLink::~PulseLink() {
    if (loop_ == nullptr) return;
    if (running_) {
        {
            const Lock lock(*this);
            dropContext();
        }
        pa_threaded_mainloop_stop(loop_);
    }
    pa_threaded_mainloop_free(loop_);
}

bool PulseLink::failed() const { return !context_ || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)); }

bool PulseLink::connected() const { return context_ && pa_context_get_state(context_) == PA_CONTEXT_READY; }

bool PulseLink::refused() {
    if (!running_) return true;
    const Lock lock(*this);
    return failed();
}

void PulseLink::dropContext() {
    if (!context_) return;
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    context_ = nullptr;
}

void PulseLink::connectAgain() {
    dropContext();
    lastAttempt_ = Steady::now();
    context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), name_);
    if (context_ == nullptr) return;
    pa_context_set_state_callback(
        context_,
        [](pa_context* context, void* self) {
            auto* link = static_cast<PulseLink*>(self);
            if (pa_context_get_state(context) == PA_CONTEXT_READY && link->onReady_) link->onReady_();
            link->changed();
        },
        this);
    pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

bool PulseLink::ready(int waitMs) {
    if (!start()) return false;
    {
        const Lock lock(*this);
        if (connected()) return true;
        if (failed()) {
            if (attempted_ && Steady::now() - lastAttempt_ < std::chrono::milliseconds(kRetryMs)) return false;
            attempted_ = true;
            connectAgain();
        }
    }
    waitFor(waitMs, [this] { return connected() || failed(); });
    const Lock lock(*this);
    return connected();
}

/// Where the system refuses a descriptor or a thread there is no server, until it has one again.
bool PulseLink::start() {
    if (running_) return true;
    if (loop_ == nullptr) loop_ = pa_threaded_mainloop_new();
    running_ = loop_ != nullptr && pa_threaded_mainloop_start(loop_) >= 0;
    return running_;
}

void PulseLink::changed() {
    const std::lock_guard lock(mutex_);
    ++changes_;
    wake_.notify_all();
}

bool PulseLink::waitFor(int waitMs, const std::function<bool()>& done) {
    const Steady::time_point deadline = Steady::now() + std::chrono::milliseconds(waitMs);
    for (;;) {
        unsigned seen = 0;
        {
            const std::lock_guard lock(mutex_);
            seen = changes_;
        }
        {
            const Lock lock(*this);
            if (done()) return true;
        }
        std::unique_lock lock(mutex_);
        if (wake_.wait_until(lock, deadline, [&] { return changes_ != seen; })) continue;
        lock.unlock();
        const Lock last(*this);
        return done();
    }
}

bool soundServerGreets(std::chrono::milliseconds patience, const Worker::GiveUp& givenUp) {
    constexpr int kLookMs = 50;  // so often it is asked whether somebody still waits
    PulseLink link("Corvane");
    const Steady::time_point deadline = Steady::now() + patience;
    do {
        if (link.ready(kLookMs)) return true;
    } while (!link.refused() && !givenUp && Steady::now() < deadline);
    return false;
}

}  // namespace corvane
