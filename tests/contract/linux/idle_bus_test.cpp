// SPDX-License-Identifier: GPL-3.0-or-later
// Idling inhibited over a message bus, against the services that a desktop has there.
#include "linux/bus/idle_bus.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <optional>
#include <string>

#include "contract/linux/private_bus.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using Calls = std::vector<std::string>;

/// A screen saver or a portal: keeps what it is asked, and answers when it is told to.
class Service : public QDBusVirtualObject {
public:
    Service(QDBusConnection bus, const QString& name, const QString& root) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(root, this, QDBusConnection::SubPath);
        bus_.registerService(name);
    }
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        std::string call = message.member().toStdString();
        if (call == "UnInhibit") call += ' ' + std::to_string(message.arguments().value(0).toUInt());
        if (call == "Close") call += ' ' + message.path().toStdString();
        if (call == "Inhibit" && message.signature() == "sua{sv}") {
            call += " flags " + std::to_string(message.arguments().value(1).toUInt());
        }
        calls.push_back(call);
        if (!message.isReplyRequired()) return true;
        if (silent) {
            message.setDelayedReply(true);
            waiting = message;
        } else {
            bus.send(message.createReply(answer));
        }
        return true;
    }
    void answerNow() {
        bus_.send(waiting->createReply(answer));
        waiting.reset();
    }

    Calls calls;
    QVariant answer = QVariant(uint{77});
    bool silent = false;
    std::optional<QDBusMessage> waiting;

private:
    QDBusConnection bus_;
};

struct IdleOnBus : ::testing::Test {
    test::PrivateBus bus;
    QDBusConnection own = bus.connect();
    IdleBus idle{[this] { return own; }};

    /// Everything that was sent so far has arrived.
    void settle() {
        QDBusMessage ping =
            QDBusMessage::createMethodCall("org.freedesktop.DBus", "/", "org.freedesktop.DBus.Peer", "Ping");
        own.call(ping);
        wait([] { return false; }, 100);
    }
    static bool wait(const std::function<bool()>& condition, int atMostMs = 5000) {
        return test::waitUntil(condition, atMostMs);
    }
};

const QString kSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");

TEST_F(IdleOnBus, TheScreenSaverIsAskedOnceAndLetGoByWhatItGave) {
    Service saver(bus.connect(), kSaver, "/org/freedesktop/ScreenSaver");
    idle.inhibit(true);
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return saver.calls == Calls{"Inhibit"}; }));
    settle();
    idle.inhibit(true);
    idle.inhibit(false);
    idle.inhibit(false);
    EXPECT_TRUE(wait([&] { return saver.calls.size() == 2; }));
    settle();
    EXPECT_EQ(saver.calls, (Calls{"Inhibit", "UnInhibit 77"}));
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return saver.calls.size() == 3; })) << "and again";
}

TEST_F(IdleOnBus, ThePortalIsAskedWhereThereIsNoScreenSaver) {
    Service portal(bus.connect(), kPortal, "/org/freedesktop/portal/desktop");
    portal.answer = QVariant::fromValue(QDBusObjectPath("/org/freedesktop/portal/desktop/request/1/a"));
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return portal.calls == Calls{"Inhibit flags 12"}; }));
    settle();
    idle.inhibit(false);
    EXPECT_TRUE(wait([&] { return portal.calls.size() == 2; }));
    EXPECT_EQ(portal.calls.back(), "Close /org/freedesktop/portal/desktop/request/1/a");
}

TEST_F(IdleOnBus, AnAnswerThatComesTooLateIsLetGoAtOnce) {
    Service saver(bus.connect(), kSaver, "/org/freedesktop/ScreenSaver");
    saver.silent = true;
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return saver.waiting.has_value(); }));
    idle.inhibit(false);
    settle();
    EXPECT_EQ(saver.calls, Calls{"Inhibit"});
    saver.answerNow();
    EXPECT_TRUE(wait([&] { return saver.calls == Calls({"Inhibit", "UnInhibit 77"}); }));
}

TEST_F(IdleOnBus, IsLetGoWhenItGoes) {
    Service saver(bus.connect(), kSaver, "/org/freedesktop/ScreenSaver");
    {
        IdleBus short_lived([this] { return own; });
        short_lived.inhibit(true);
        EXPECT_TRUE(wait([&] { return saver.calls.size() == 1; }));
        settle();
    }
    EXPECT_TRUE(wait([&] { return saver.calls == Calls({"Inhibit", "UnInhibit 77"}); }));
}

TEST_F(IdleOnBus, ABusThatHangsHoldsNobody) {
    Service saver(bus.connect(), kSaver, "/org/freedesktop/ScreenSaver");
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return saver.calls.size() == 1; }));
    settle();
    bus.hang();
    const test::Stopwatch clock;
    for (int i = 0; i < 20; ++i) {
        idle.inhibit(false);
        idle.inhibit(true);
    }
    idle.inhibit(false);
    EXPECT_LT(clock.own().count(), 1000);
    bus.goOn();
    EXPECT_TRUE(wait([&] { return saver.calls.back() == "UnInhibit 77"; }));
}

TEST_F(IdleOnBus, AnAnswerOfAnotherShapeIsNone) {
    Service saver(bus.connect(), kSaver, "/org/freedesktop/ScreenSaver");
    saver.answer = QVariant("seventy-seven");
    idle.inhibit(true);
    EXPECT_TRUE(wait([&] { return saver.calls.size() == 1; }));
    settle();
    idle.inhibit(false);
    settle();
    EXPECT_EQ(saver.calls, Calls{"Inhibit"});
}

TEST(IdleWithout, ABusNothingHappens) {
    test::offscreenApplication();
    IdleBus idle([] { return QDBusConnection(QStringLiteral("none")); });
    idle.inhibit(true);
    idle.inhibit(false);
}

}  // namespace
}  // namespace corvane
