// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/ui_post.h"

#include <QMetaObject>
#include <utility>

namespace corvane {

// The last copy may go on a worker thread, where a QObject must not be destroyed at once.
UiPost::UiPost(EventLoop& loop)
    : loop_(&loop), receiver_(new QObject, [](QObject* object) { object->deleteLater(); }) {}

void UiPost::operator()(EventLoop::Handler event) const {
    QMetaObject::invokeMethod(
        receiver_.get(), [loop = loop_, event = std::move(event)]() mutable { loop->post(std::move(event)); },
        Qt::QueuedConnection);
}

}  // namespace corvane
