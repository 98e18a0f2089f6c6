// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/idle_bus.h"

#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>
#include <utility>

namespace corvane {

namespace {

const QString kSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kSaverPath = QStringLiteral("/org/freedesktop/ScreenSaver");
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kReason = QStringLiteral("A movie or pictures are shown");
constexpr uint kSuspend = 4, kIdle = 8;  // the portal's flags

QDBusMessage saverCall(const QString& method) {
    return QDBusMessage::createMethodCall(kSaver, kSaverPath, kSaver, method);
}

}  // namespace

IdleBus::IdleBus(Bus bus) : source_(std::move(bus)) {}

IdleBus::~IdleBus() { inhibit(false); }

void IdleBus::inhibit(bool on) {
    wanted_ = on;
    follow();
}

void IdleBus::follow() {
    if (asking_) return;  // the answer is followed
    if (!wanted_ && release_) {
        bus_->call(*std::exchange(release_, std::nullopt), QDBus::NoBlock);
    } else if (wanted_ && !release_) {
        if (!bus_) bus_ = source_();
        if (bus_->isConnected()) askScreenSaver();
    }
}

void IdleBus::askScreenSaver() {
    await(bus_->asyncCall(saverCall(QStringLiteral("Inhibit")) << QStringLiteral("Corvane") << kReason),
          [this](const QDBusMessage& answer) {
              if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("u")) {
                  if (wanted_) askPortal();
                  return;
              }
              release_ = saverCall(QStringLiteral("UnInhibit")) << answer.arguments().front();
          });
}

void IdleBus::askPortal() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        kPortal, kPortalPath, QStringLiteral("org.freedesktop.portal.Inhibit"), QStringLiteral("Inhibit"));
    call << QString() << (kSuspend | kIdle) << QVariantMap{{QStringLiteral("reason"), kReason}};
    await(bus_->asyncCall(call), [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("o")) return;
        release_ =
            QDBusMessage::createMethodCall(kPortal, answer.arguments().front().value<QDBusObjectPath>().path(),
                                           QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Close"));
    });
}

void IdleBus::await(const QDBusPendingCall& call, const std::function<void(const QDBusMessage&)>& answered) {
    asking_ = true;
    auto* const answer = new QDBusPendingCallWatcher(call, this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, answered] {
        answer->deleteLater();
        asking_ = false;
        answered(answer->reply());
        if (!wanted_) follow();
    });
}

}  // namespace corvane
