// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_devices.h"

#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/subscribe.h>

#include <algorithm>

namespace corvane {

namespace {

constexpr const char* kSink = "@DEFAULT_SINK@";
constexpr int kWaitMs = 200;
constexpr std::uint64_t kFull = 0xFFFF;
constexpr std::size_t kMostRemembered = 256;

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

std::uint32_t toHalf(pa_volume_t volume) {
    const std::uint64_t scaled = (std::uint64_t{volume} * kFull + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM;
    return static_cast<std::uint32_t>(std::min(kFull, scaled));
}

pa_volume_t fromHalf(std::uint32_t half) {
    return static_cast<pa_volume_t>((std::uint64_t{half} * PA_VOLUME_NORM + kFull / 2) / kFull);
}

}  // namespace

std::uint32_t toVolumeWord(const pa_cvolume& volume) {
    if (volume.channels == 0) return 0;
    const std::uint32_t left = toHalf(volume.values[0]);
    const std::uint32_t right = volume.channels > 1 ? toHalf(volume.values[1]) : left;
    return right << 16 | left;
}

pa_cvolume fromVolumeWord(std::uint32_t word, unsigned channels) {
    const pa_volume_t left = fromHalf(word & 0xFFFF);
    const pa_volume_t right = fromHalf(word >> 16);
    pa_cvolume volume;
    pa_cvolume_set(&volume, std::clamp(channels, 1U, static_cast<unsigned>(PA_CHANNELS_MAX)), (left + right) / 2);
    if (volume.channels > 1) {
        volume.values[0] = left;
        volume.values[1] = right;
    }
    return volume;
}

PulseSoundDevices::PulseSoundDevices(std::optional<UiPost> post) : post_(std::move(post)), link_("Corvane volume") {
    link_.onReady([this] {
        {
            const std::lock_guard lock(mutex_);
            setting_ = 0;  // of a connection that is gone
        }
        pa_context* context = link_.context();
        pa_context_set_subscribe_callback(
            context,
            [](pa_context*, pa_subscription_event_type_t, std::uint32_t, void* self) {
                static_cast<PulseSoundDevices*>(self)->ask();
            },
            this);
        // The server's own entry changes when another output becomes the default.
        const auto what = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER);
        release(pa_context_subscribe(context, what, nullptr, nullptr));
        ask();
    });
    link_.ready(0);
}

/// What was set last must still reach the server.
PulseSoundDevices::~PulseSoundDevices() {
    if (post_) post_->stop();
    if (!link_.ready(0)) return;
    bool drained = false;
    struct Flag {
        bool& drained;
        PulseLink& link;
    } flag{drained, link_};
    pa_operation* operation = nullptr;
    {
        const PulseLink::Lock lock(link_);
        operation = pa_context_drain(
            link_.context(),
            [](pa_context*, void* data) {
                static_cast<Flag*>(data)->drained = true;
                static_cast<Flag*>(data)->link.changed();
            },
            &flag);
    }
    if (operation) link_.waitFor(kWaitMs, [&] { return drained; });
    const PulseLink::Lock lock(link_);
    if (operation && !drained) pa_operation_cancel(operation);
    release(operation);
}

/// On the connection's thread.
void PulseSoundDevices::ask() {
    release(pa_context_get_sink_info_by_name(
        link_.context(), kSink,
        [](pa_context*, const pa_sink_info* info, int end, void* self) {
            if (end == 0) static_cast<PulseSoundDevices*>(self)->took(info);
        },
        this));
}

void PulseSoundDevices::took(const pa_sink_info* info) {
    bool changed = false;
    {
        const std::lock_guard lock(mutex_);
        if (setting_ > 0 && info->name == output_) return;  // of before; it is asked for again
        changed = !current_ || info->name != output_ || pa_cvolume_equal(&*current_, &info->volume) == 0;
        current_ = info->volume;
        output_ = info->name;
    }
    link_.changed();
    if (changed) tellChange();
}

/// On the connection's thread: the server has what was set.
void PulseSoundDevices::settled() {
    {
        const std::lock_guard lock(mutex_);
        setting_ = std::max(setting_ - 1, 0);
        if (setting_ > 0) return;
    }
    ask();
}

void PulseSoundDevices::tellChange() {
    if (!post_ || told_.exchange(true)) return;
    (*post_)([this, alive = std::weak_ptr(alive_)] {
        if (alive.expired()) return;
        told_ = false;
        WaveOutChanged.raise();
    });
}

/// Waits for the server at the first reading only.
bool PulseSoundDevices::known() {
    const bool ready = link_.ready(kWaitMs);
    if (ready) {
        link_.waitFor(kWaitMs, [this] {
            const std::lock_guard lock(mutex_);
            return current_.has_value();
        });
    }
    const std::lock_guard lock(mutex_);
    if (!ready) current_.reset();
    return current_.has_value();
}

std::optional<std::uint32_t> PulseSoundDevices::waveOutGetVolume() {
    if (!known()) return std::nullopt;
    const std::lock_guard lock(mutex_);
    if (!current_) return std::nullopt;
    const std::uint32_t word = toVolumeWord(*current_);
    if (read_.size() < kMostRemembered) read_[{output_, word}] = *current_;
    return word;
}

std::optional<std::string> PulseSoundDevices::waveOutName() {
    if (!known()) return std::nullopt;
    const std::lock_guard lock(mutex_);
    return output_;
}

void PulseSoundDevices::waveOutSetVolume(std::uint32_t word) {
    std::string name;
    {
        const std::lock_guard lock(mutex_);
        name = current_ ? output_ : kSink;
    }
    set(name, word);
}

void PulseSoundDevices::waveOutSetVolumeOf(const std::string& name, std::uint32_t word) {
    if (!name.empty()) set(name, word);
}

void PulseSoundDevices::set(const std::string& name, std::uint32_t word) {
    if (!link_.ready(kWaitMs)) return;
    const PulseLink::Lock lock(link_);
    pa_cvolume volume;
    {
        const std::lock_guard guard(mutex_);
        const bool inUse = current_ && name == output_;
        const auto exact = read_.find({name, word});
        const unsigned channels = inUse ? current_->channels : exact != read_.end() ? exact->second.channels : 2U;
        volume =
            exact != read_.end() && exact->second.channels == channels ? exact->second : fromVolumeWord(word, channels);
        if (inUse) current_ = volume;
    }
    pa_operation* const operation = pa_context_set_sink_volume_by_name(
        link_.context(), name.c_str(), &volume,
        [](pa_context*, int /*success*/, void* self) { static_cast<PulseSoundDevices*>(self)->settled(); }, this);
    if (operation == nullptr) return;
    const std::lock_guard guard(mutex_);
    ++setting_;
    release(operation);
}

}  // namespace corvane
