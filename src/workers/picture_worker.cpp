// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/picture_worker.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "workers/worker.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kAfterPainting{30};

}  // namespace

struct PictureWorker::Shared {
    Post post;
    Load load = nullptr;
    StampOf stampOf = nullptr;
    std::weak_ptr<Asked> asked;
    std::mutex mutex;  ///< guards what follows
    std::condition_variable changed;
    PictureQueue queue;
    bool busy = false;                          ///< a worker runs
    std::shared_ptr<PictureQueue::Job> untold;  ///< taken, and its answer not told yet

    void work();
    /// The worker has ended by what was thrown outside of a decoder.
    void brokeOff();
    void answer(PictureQueue::Answer answer) const;
    std::pair<PictureQueue::Stamp, Decoded> decode(const PictureQueue::Job& job) const;
};

void PictureWorker::Shared::work() {
    std::unique_lock lock(mutex);
    while (queue.anyWanted()) {
        // A hint comes just before the picture on the screen is painted, which must not wait for a processor.
        changed.wait_for(lock, kAfterPainting, [this] { return !queue.hasTime(); });
        const auto job = queue.take();
        if (!job) break;
        untold = job;
        PictureQueue::Ready old = queue.takeReady();
        lock.unlock();
        old = {};
        auto [stamp, decoded] = decode(*job);
        lock.lock();
        if (auto told = queue.finish(*job, stamp, std::move(decoded))) answer(std::move(*told));
        untold.reset();
    }
    busy = false;
}

void PictureWorker::Shared::brokeOff() {
    std::optional<PictureQueue::Answer> told;
    {
        const std::lock_guard lock(mutex);
        busy = false;
        if (const auto left = std::exchange(untold, {})) told = queue.finish(*left, {}, {{}, Worker::kBroken});
    }
    if (told) answer(std::move(*told));
}

std::pair<PictureQueue::Stamp, PictureWorker::Decoded> PictureWorker::Shared::decode(
    const PictureQueue::Job& job) const {
    try {
        const PictureQueue::Stamp stamp = stampOf(job.path, job.givenUp);
        return {stamp, load(job.path, job.givenUp)};
    } catch (...) {  // as when memory is short
        return {PictureQueue::Stamp{}, Decoded{{}, Worker::kBroken}};
    }
}

/// Any thread.
void PictureWorker::Shared::answer(PictureQueue::Answer answer) const {
    const auto told = std::make_shared<PictureQueue::Answer>(std::move(answer));
    post([told, who = asked] {
        const auto waiting = who.lock();
        if (!waiting || waiting->number != told->number || !waiting->done) return;
        const auto done = std::exchange(waiting->done, {});
        done(std::move(told->decoded));
    });
}

PictureWorker::PictureWorker(Post post, Load load, StampOf stampOf) : shared_(std::make_shared<Shared>()) {
    shared_->post = std::move(post);
    shared_->load = std::move(load);
    shared_->stampOf = stampOf;
    shared_->asked = asked_;
}

PictureWorker::~PictureWorker() {
    const std::lock_guard lock(shared_->mutex);
    shared_->queue.end();
    shared_->changed.notify_all();
}

std::optional<Pictures::Decoded> PictureWorker::begin(const std::string& path, std::function<void(Decoded)> done) {
    PictureQueue::Ready ready;
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->queue.forget();
        ready = shared_->queue.takeReady();
    }
    asked_->done = {};
    if (ready.path == path) {
        const GiveUp never{false};
        if (PictureQueue::counts(ready, path, shared_->stampOf(path, never))) return std::move(ready.decoded);
    }
    ready = {};  // what was decoded for nothing must not take the room of what is wanted
    {
        const std::lock_guard lock(shared_->mutex);
        asked_->number = shared_->queue.begin(path);
        shared_->changed.notify_all();
    }
    asked_->done = std::move(done);
    wake();
    return std::nullopt;
}

void PictureWorker::giveUp() {
    asked_->done = {};
    const std::lock_guard lock(shared_->mutex);
    shared_->queue.forget();
}

void PictureWorker::decodeAhead(const std::string& path) {
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->queue.hint(path);
    }
    wake();
}

bool PictureWorker::isIdle() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->queue.isIdle();
}

/// Sees to it that a worker takes what is wanted.
void PictureWorker::wake() {
    {
        const std::lock_guard lock(shared_->mutex);
        if (shared_->busy || !shared_->queue.anyWanted()) return;
        shared_->busy = true;
    }
    const bool runs = Worker::run([shared = shared_](const Worker::GiveUp& /*atTheEnd*/) { shared->work(); },
                                  [shared = shared_] { shared->brokeOff(); });
    if (runs) return;
    std::optional<PictureQueue::Answer> failed;
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->busy = false;
        if (const auto job = shared_->queue.take()) failed = shared_->queue.finish(*job, {}, {{}, Worker::kRefused});
    }
    if (failed) shared_->answer(std::move(*failed));
}

}  // namespace corvane
