// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_post.h"

#include <QCoreApplication>
#include <QObject>
#include <utility>

namespace corvane {

namespace {

/// Where it was never shut, its object is left behind: it belongs to the user-interface thread.
class QtDoor : public UiPost::Door {
public:
    void ask(EventLoop::Handler call) override {
        QMetaObject::invokeMethod(called_, std::move(call), Qt::QueuedConnection);
    }
    void shut() override {
        QCoreApplication::removePostedEvents(called_);
        called_->deleteLater();  // it may be what called us
    }

private:
    QObject* const called_ = new QObject;  ///< its thread is called
};

std::unique_ptr<UiPost::Door> makeDoor() { return std::make_unique<QtDoor>(); }

}  // namespace

QtPost::QtPost() : UiPost(makeDoor) {}

QtPost::QtPost(EventLoop& loop) : UiPost(makeDoor, loop) {}

}  // namespace corvane
