// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <optional>

#include "platform/idle_inhibitor.h"

class QDBusPendingCall;

namespace corvane {

/// Inhibits idling over the user's message bus: by the screen saver's interface, or by the portal's where there is
/// none. Every call is sent and not waited for; an answer that comes too late is let go at once.
class IdleBus : public QObject, public IdleInhibitor {
public:
    using Bus = std::function<QDBusConnection()>;

    /// bus is asked when idling is inhibited for the first time; one that is not connected is done without.
    explicit IdleBus(Bus bus);
    ~IdleBus() override;

    void inhibit(bool on) override;

private:
    void follow();
    void askScreenSaver();
    void askPortal();
    void await(const QDBusPendingCall& call, const std::function<void(const QDBusMessage&)>& answered);

    Bus source_;
    std::optional<QDBusConnection> bus_;
    bool wanted_ = false;
    bool asking_ = false;                  ///< an answer is to come
    std::optional<QDBusMessage> release_;  ///< what lets go of what is held
};

}  // namespace corvane
