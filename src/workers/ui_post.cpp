// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/ui_post.h"

#include <deque>
#include <mutex>
#include <utility>

namespace corvane {

/// The last copy may end on a worker, so only stop() takes down what belongs to the user-interface thread.
struct UiPost::End : std::enable_shared_from_this<UiPost::End> {
    explicit End(MakeDoor how) : make(std::move(how)), door(make()) {}

    const MakeDoor make;
    std::mutex mutex;
    std::unique_ptr<Door> door;  ///< null once stopped. Guarded by the mutex, like the next one
    std::deque<EventLoop::Handler> queue;
    EventLoop* loop = nullptr;

    void put(EventLoop::Handler event) {
        const std::lock_guard lock(mutex);
        if (!door) return;
        queue.push_back(std::move(event));
        // One call for each event: a loop inside one of them gets the rest.
        door->ask([end = shared_from_this()] { end->take(); });
    }

    void take() {
        EventLoop::Handler event;
        {
            const std::lock_guard lock(mutex);
            if (queue.empty()) return;
            event = std::move(queue.front());
            queue.pop_front();
        }
        if (loop != nullptr) return loop->post(std::move(event));
        event();
    }
};

UiPost::UiPost(MakeDoor make) : end_(std::make_shared<End>(std::move(make))) {}

UiPost::UiPost(MakeDoor make, EventLoop& loop) : UiPost(std::move(make)) { end_->loop = &loop; }

UiPost UiPost::another() const { return UiPost(end_->make); }

void UiPost::operator()(EventLoop::Handler event) const { end_->put(std::move(event)); }

void UiPost::stop() {
    std::deque<EventLoop::Handler> dropped;
    std::unique_ptr<Door> door;
    {
        const std::lock_guard lock(end_->mutex);
        door = std::exchange(end_->door, nullptr);
        dropped.swap(end_->queue);
    }
    if (door) door->shut();
}

}  // namespace corvane
