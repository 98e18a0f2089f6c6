// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/ui_post.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <cstdint>
#include <deque>
#include <mutex>
#include <system_error>
#include <utility>

namespace corvane {

/// The last copy may end on a worker, so only stop() takes down what belongs to the user-interface thread.
struct UiPost::End : std::enable_shared_from_this<UiPost::End> {
    /// Counts the events that wait: a loop inside one of them is woken for the rest.
    const int waiting = eventfd(0, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC);
    std::mutex mutex;
    std::deque<EventLoop::Handler> queue;  ///< guarded by the mutex, like the next one
    bool stopped = false;
    // the user-interface thread's own
    EventLoop* loop = nullptr;
    QSocketNotifier* notifier = nullptr;
    int running = 0;

    ~End() {
        if (waiting >= 0) close(waiting);
    }

    void put(EventLoop::Handler event) {
        const std::lock_guard lock(mutex);
        if (stopped) return;
        queue.push_back(std::move(event));
        const std::uint64_t one = 1;
        // Under the mutex, and never refused: a count of 2^64 is out of reach.
        [[maybe_unused]] const ssize_t written = write(waiting, &one, sizeof one);
    }

    void take() {
        std::uint64_t one = 0;
        if (read(waiting, &one, sizeof one) != sizeof one) return;
        EventLoop::Handler event;
        {
            const std::lock_guard lock(mutex);
            if (queue.empty()) return;
            event = std::move(queue.front());
            queue.pop_front();
        }
        if (loop) return loop->post(std::move(event));
        const auto alive = shared_from_this();
        ++running;
        event();
        --running;
    }
};

UiPost::UiPost() : end_(std::make_shared<End>()) {
    if (end_->waiting < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    end_->notifier = new QSocketNotifier(end_->waiting, QSocketNotifier::Read);
    QObject::connect(end_->notifier, &QSocketNotifier::activated, [end = end_.get()] { end->take(); });
}

UiPost::UiPost(EventLoop& loop) : UiPost() { end_->loop = &loop; }

void UiPost::operator()(EventLoop::Handler event) const { end_->put(std::move(event)); }

void UiPost::stop() {
    std::deque<EventLoop::Handler> dropped;
    {
        const std::lock_guard lock(end_->mutex);
        end_->stopped = true;
        dropped.swap(end_->queue);
    }
    QSocketNotifier* notifier = std::exchange(end_->notifier, nullptr);
    if (!notifier) return;
    notifier->setEnabled(false);
    if (end_->running > 0) {
        notifier->deleteLater();  // it is what called us
    } else {
        delete notifier;
    }
}

}  // namespace corvane
