// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/sleep_bus.h"

#include <QPointer>
#include <chrono>
#include <cstdlib>
#include <utility>

#include "linux/bus/bus_probe.h"

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString kSessions = QStringLiteral("org.freedesktop.login1.Session");

}  // namespace

bool SleepBus::systemBusAnswers() {
    const char* const named = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    const std::string address = named != nullptr ? named : "unix:path=/run/dbus/system_bus_socket";
    // One of another machine does not know when this one sleeps.
    return address.starts_with("unix:") && busAnswers(address, kPatience);
}

SleepBus::SleepBus(UiPost post, std::function<bool()> answers, Bus bus, std::function<void(bool sleeps)> told,
                   std::function<void()> locks)
    : source_(std::move(bus)), told_(std::move(told)), locks_(std::move(locks)) {
    asking_.start([post = std::move(post), answers = std::move(answers),
                   self = QPointer<SleepBus>(this)](const Worker::GiveUp& /*givenUp*/) {
        if (!answers()) return;
        post([self] {
            if (self) self->listen();
        });
    });
}

/// Another user of the machine may send what looks alike: the sender must be the one that puts it to sleep.
void SleepBus::listen() {
    QDBusConnection bus = source_();
    if (!bus.isConnected()) return;
    bus.connect(kService, kPath, kInterface, QStringLiteral("PrepareForSleep"), this, SLOT(preparing(bool)));
    // Of any session: which one is ours is not always known.
    bus.connect(kService, QString(), kSessions, QStringLiteral("Lock"), this, SLOT(locking()));
}

}  // namespace corvane
