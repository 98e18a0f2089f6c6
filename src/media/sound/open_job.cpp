// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/open_job.h"

#include <chrono>
#include <utility>

#include "workers/worker.h"

namespace corvane {

namespace {
/// An exact length is worth this wait where a good one is known already.
constexpr std::chrono::milliseconds kWaitForExact{30};
}  // namespace

std::shared_ptr<OpenJob> OpenJob::start(Opener opener, std::function<void()> opened) {
    auto job = std::make_shared<OpenJob>();
    const auto work = [job, opener = std::move(opener), opened](const Worker::GiveUp&) { job->run(opener, opened); };
    const auto broken = [job, opened] {
        if (job->fail(Worker::kBroken)) opened();
    };
    if (!Worker::run(work, broken)) job->fail(Worker::kRefused);
    return job;
}

/// False: it was open already, and only its length could not be found.
bool OpenJob::fail(const char* reason) {
    const std::lock_guard lock(mutex_);
    const bool opening = !std::exchange(finished_, true);
    measured_ = true;
    if (opening) reason_ = reason;
    wake_.notify_all();
    return opening;
}

void OpenJob::run(const Opener& opener, const std::function<void()>& opened) {
    OpenedSound result = opener(abandoned_);
    std::shared_ptr<SoundBackend> sound = std::move(result.sound);
    {
        const std::lock_guard lock(mutex_);
        finished_ = true;
        measured_ = !sound;
        reason_ = std::move(result.reason);
        if (*abandoned_) return;
        sound_ = sound;
        wake_.notify_all();
    }
    opened();
    if (!sound) return;
    sound->measure();
    const std::lock_guard lock(mutex_);
    measured_ = true;
    wake_.notify_all();
}

void OpenJob::wait() {
    const auto begin = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    if (wake_.wait_until(lock, begin + kWaitForExact, [this] { return measured_; })) return;
    wake_.wait_until(lock, begin + std::chrono::milliseconds(kWaitMs),
                     [this] { return measured_ || (sound_ && sound_->lengthKnown()); });
}

bool OpenJob::finished() const {
    const std::lock_guard lock(mutex_);
    return finished_;
}

std::shared_ptr<SoundBackend> OpenJob::sound() const {
    const std::lock_guard lock(mutex_);
    return sound_;
}

std::string OpenJob::reason() const {
    const std::lock_guard lock(mutex_);
    return reason_;
}

void OpenJob::abandon() {
    const std::lock_guard lock(mutex_);
    *abandoned_ = true;
    if (sound_) sound_->abandoned = true;
    sound_.reset();
}

}  // namespace corvane
