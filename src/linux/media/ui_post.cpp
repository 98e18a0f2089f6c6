// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/ui_post.h"

#include <QCoreApplication>
#include <QObject>
#include <deque>
#include <mutex>
#include <utility>

namespace corvane {

/// The last copy may end on a worker, so only stop() takes down what belongs to the user-interface thread.
struct UiPost::End : std::enable_shared_from_this<UiPost::End> {
    std::mutex mutex;
    QObject* door = new QObject;  ///< its thread is woken; null once stopped. Guarded by the mutex, like the next one
    std::deque<EventLoop::Handler> queue;
    EventLoop* loop = nullptr;

    void put(EventLoop::Handler event) {
        const std::lock_guard lock(mutex);
        if (door == nullptr) return;
        queue.push_back(std::move(event));
        // One call for each event: a loop inside one of them gets the rest.
        QMetaObject::invokeMethod(
            door, [end = shared_from_this()] { end->take(); }, Qt::QueuedConnection);
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

UiPost::UiPost() : end_(std::make_shared<End>()) {}

UiPost::UiPost(EventLoop& loop) : UiPost() { end_->loop = &loop; }

void UiPost::operator()(EventLoop::Handler event) const { end_->put(std::move(event)); }

void UiPost::stop() {
    std::deque<EventLoop::Handler> dropped;
    QObject* door = nullptr;
    {
        const std::lock_guard lock(end_->mutex);
        door = std::exchange(end_->door, nullptr);
        dropped.swap(end_->queue);
    }
    if (door == nullptr) return;
    QCoreApplication::removePostedEvents(door);
    door->deleteLater();  // it may be what called us
}

}  // namespace corvane
