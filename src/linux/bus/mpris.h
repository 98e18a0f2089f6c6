// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>
#include <functional>
#include <optional>

#include "engine/media_session.h"
#include "linux/bus/mpris_call.h"
#include "platform/event_loop.h"

namespace corvane {

/// The media session on a message bus, as MPRIS 2.2 has it: name, calls, properties and signals in D-Bus's words.
/// Commands are posted, so that they wait while a box is up, and answered when they have run; readings are answered at
/// once. It comes onto the bus a moment after the panel stands, and leaves when the panel goes.
class Mpris : public QDBusVirtualObject {
public:
    using Bus = std::function<QDBusConnection()>;

    /// Session and loop outlive it. bus is asked once; a connection that is not connected is done without.
    Mpris(MediaSession& session, EventLoop& loop, Bus bus);
    ~Mpris() override;

    /// The user's message bus; not connected where there is none.
    static QDBusConnection userBus() { return QDBusConnection::sessionBus(); }
    /// Called before the application is made: where no bus runs, none is started for the player's sake.
    static void startNoBus();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    using Answer = MediaSession::Answer;
    using Command = std::function<Answer(MediaSession&)>;

    void follow();
    void serve();
    void withdraw();
    void takeName(const QString& name, const QString& otherwise);
    void run(const QDBusMessage& message, Command command);
    void runOrRefuse(const QDBusMessage& message, const MprisCommand& command);
    void reply(Answer answer);
    void callProperties(const QDBusMessage& message);
    void set(const QDBusMessage& message, const QString& property, const QVariant& value);
    QVariantMap rootProperties() const;
    QVariantMap playerProperties() const;  ///< without the position
    QVariantMap metadata() const;
    void tellChanges();
    void tellProperties(const QVariantMap& changed);
    void tellSeeked(std::int64_t positionUs);

    MediaSession& session_;
    EventLoop& loop_;
    Bus source_;
    bool begun_ = false;
    std::optional<QDBusConnection> bus_;  ///< while it is served
    QString name_;
    std::optional<QDBusMessage> running_;  ///< the call whose command runs and that has no answer yet
    QVariantMap told_;                     ///< what listeners know of the player's properties
};

}  // namespace corvane
