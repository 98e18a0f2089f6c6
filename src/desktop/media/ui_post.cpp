// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/ui_post.h"

#include <QMetaObject>
#include <QThread>
#include <utility>

namespace corvane {

namespace {

/// Lets the object go on its own thread: the last copy may end on a worker.
template <class T>
void deleteOnItsThread(T* end) {
    if (end->receiver.thread() == QThread::currentThread()) {
        delete end;
    } else {
        QMetaObject::invokeMethod(
            &end->receiver, [end] { delete end; }, Qt::QueuedConnection);
    }
}

}  // namespace

UiPost::UiPost(EventLoop& loop) : end_(new End, [](End* end) { deleteOnItsThread(end); }) { end_->loop = &loop; }

void UiPost::operator()(EventLoop::Handler event) const {
    QMetaObject::invokeMethod(
        &end_->receiver,
        [end = end_.get(), event = std::move(event)]() mutable {
            if (end->loop) end->loop->post(std::move(event));
        },
        Qt::QueuedConnection);
}

void UiPost::stop() { end_->loop = nullptr; }

}  // namespace corvane
