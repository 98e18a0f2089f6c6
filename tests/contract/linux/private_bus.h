// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <csignal>
#include <vector>

#include "unit/linux/offscreen.h"

namespace corvane::test {

/// A message bus of its own for one test.
class PrivateBus {
public:
    PrivateBus() {
        offscreenApplication();
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                       QStringLiteral("--print-address"),
                       QStringLiteral("--address=unix:path=%1").arg(QString::fromStdString(folder_.in("bus")))});
        daemon_.waitForReadyRead(10000);
        address_ = QString::fromLatin1(daemon_.readLine().trimmed());
    }
    ~PrivateBus() {
        for (const QString& name : connections_) QDBusConnection::disconnectFromBus(name);
        daemon_.kill();
        daemon_.waitForFinished();
    }
    /// Stops the daemon where it stands: it keeps its connections and answers nobody; and lets it go on.
    void hang() { kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP); }
    void goOn() { kill(static_cast<pid_t>(daemon_.processId()), SIGCONT); }
    QDBusConnection connect() {
        connections_.push_back(QStringLiteral("test%1").arg(++count));
        return QDBusConnection::connectToBus(address_, connections_.back());
    }

private:
    static inline int count = 0;  ///< connections so far, of all tests
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    std::vector<QString> connections_;
};

}  // namespace corvane::test
