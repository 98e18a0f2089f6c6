// SPDX-License-Identifier: GPL-3.0-or-later
// What is heard of the machine's sleep on a message bus, against a service that stands for the system's.
#include "linux/bus/sleep_bus.h"
#include "linux/qt_post.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "contract/linux/private_bus.h"

namespace corvane {
namespace {

const QString kLogin = QStringLiteral("org.freedesktop.login1");

struct SleepOnBus : ::testing::Test {
    test::PrivateBus bus;
    test::RigLoop loop;
    QtPost post{loop};
    QDBusConnection own = bus.connect();
    QDBusConnection login = bus.connect();
    std::vector<bool> told;
    bool asked = false;
    int locks = 0;

    ~SleepOnBus() override { post.stop(); }

    std::unique_ptr<SleepBus> listening(bool answers = true) {
        auto heard = std::make_unique<SleepBus>(
            post, [answers] { return answers; },
            [this] {
                asked = true;
                return own;
            },
            [this](bool sleeps) { told.push_back(sleeps); }, [this] { ++locks; });
        test::waitUntil([this] { return asked; }, answers ? 5000 : 200);
        return heard;
    }
    static void say(const QDBusConnection& from, bool sleeps, const char* name = "PrepareForSleep") {
        QDBusMessage signal =
            QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
                                       QStringLiteral("org.freedesktop.login1.Manager"), QString::fromLatin1(name));
        signal << sleeps;
        EXPECT_TRUE(from.send(signal));
    }
    /// The listening connection knows by now who has which name: one answer comes behind the bus's news of it, another
    /// one behind what the tool kit makes of that.
    void learnNames() {
        const QDBusMessage ask =
            QDBusMessage::createMethodCall("org.freedesktop.DBus", "/", "org.freedesktop.DBus.Peer", "Ping");
        for (int i = 0; i < 2; ++i) EXPECT_EQ(own.call(ask).type(), QDBusMessage::ReplyMessage);
    }
    bool wait(std::size_t count) {
        return test::waitUntil([&] { return told.size() >= count; }, 5000);
    }
};

/// DESK-05: The machine's sleep is heard of by the service that puts it to sleep, also of one that comes or is started
///     again later
TEST_F(SleepOnBus, IsHeardOfTheServiceThatDoesIt) {
    const auto heard = listening();
    ASSERT_TRUE(login.registerService(kLogin));
    learnNames();
    say(login, true);
    say(login, false);
    ASSERT_TRUE(wait(2));
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
    ASSERT_TRUE(login.unregisterService(kLogin));
    QDBusConnection next = bus.connect();
    ASSERT_TRUE(next.registerService(kLogin));
    learnNames();
    say(next, true);
    EXPECT_TRUE(wait(3));
}

/// DESK-06: What another program on the bus says of sleep counts for nothing
TEST_F(SleepOnBus, IsNotHeardOfAnybodyElse) {
    ASSERT_TRUE(login.registerService(kLogin));
    const auto heard = listening();
    const QDBusConnection stranger = bus.connect();
    say(stranger, true);
    say(login, true, "PrepareForShutdown");
    say(login, false);
    ASSERT_TRUE(wait(1));
    EXPECT_EQ(told, std::vector<bool>{false});
}

/// DESK-17: A menu that is open keeps no lock away: it goes when the screen is to be locked
TEST_F(SleepOnBus, TheLockOfASessionIsHeardOfTheSameServiceAlone) {
    ASSERT_TRUE(login.registerService(kLogin));
    const auto heard = listening();
    const auto lock = [](const QDBusConnection& from) {
        EXPECT_TRUE(from.send(QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1/session/_32"),
                                                         QStringLiteral("org.freedesktop.login1.Session"),
                                                         QStringLiteral("Lock"))));
    };
    lock(bus.connect());
    lock(login);
    EXPECT_TRUE(test::waitUntil([&] { return locks == 1; }, 5000));
    test::waitUntil([] { return false; }, 50);
    EXPECT_EQ(locks, 1);
}

/// DESK-07: A system without a bus, or with one that does not answer, is done without
TEST_F(SleepOnBus, ABusThatDoesNotAnswerIsNeverAsked) {
    const auto heard = listening(false);
    EXPECT_FALSE(asked);
}

/// DESK-07
TEST(SystemBus, IsLookedForOnThisMachineAlone) {
    const char* const before = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    const std::string kept = before != nullptr ? before : "";
    for (const char* each : {"tcp:host=127.0.0.1,port=1", "unixexec:path=/bin/true", "", "unix:path=/dev/null"}) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", each, 1);
        EXPECT_FALSE(SleepBus::systemBusAnswers()) << each;
    }
    if (before != nullptr) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", kept.c_str(), 1);
    } else {
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }
}

}  // namespace
}  // namespace corvane
