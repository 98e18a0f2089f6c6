// SPDX-License-Identifier: GPL-3.0-or-later
// What a user has set on the desktop, by its portal on a message bus of our own and by the files of the user.
#include "linux/bus/desktop_settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "contract/linux/private_bus.h"
#include "linux/bus/manners.h"

namespace corvane {
namespace {

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");

/// Answers every call with the same; what it is asked is counted.
class Portal : public QDBusVirtualObject {
public:
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    Portal(QDBusConnection bus, QVariant answer) : bus_(std::move(bus)), answer_(std::move(answer)) {
        bus_.registerVirtualObject(kPath, this);
        bus_.registerService(kPortal);
    }
    ~Portal() override { bus_.unregisterService(kPortal); }
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        ++asked;
        return bus.send(message.createReply(answer_));
    }
    void changes(const QString& group, const QString& key, const QVariant& value) {
        QDBusMessage signal = QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        bus_.send(signal);
    }
    int asked = 0;

private:
    QDBusConnection bus_;
    QVariant answer_;
};

struct Settings : ::testing::Test {
    Settings() { qDBusRegisterMetaType<DesktopSettings::Groups>(); }
    static QVariant told(const QString& group, const QString& key, const QVariant& value) {
        return QVariant::fromValue(DesktopSettings::Groups{{group, {{key, value}}}});
    }
    std::unique_ptr<DesktopSettings> onBus() {
        return std::make_unique<DesktopSettings>(
            mannersPlaces(), [this] { return bus.connect(); }, folder.path(), [this] { ++changes; });
    }
    static Manners by(const DesktopSettings& settings) { return mannersBy(settings.values()); }
    /// Whether less motion is asked for, within so many milliseconds of the answer.
    bool isAskedBy(const QVariant& answer, int withinMs = kInTime) {
        Portal portal(bus.connect(), answer);
        const auto settings = onBus();
        EXPECT_FALSE(by(*settings).lessMotion) << "nothing is waited for";
        EXPECT_TRUE(test::waitUntil([&] { return portal.asked > 0; }, kInTime));
        return test::waitUntil([&] { return by(*settings).lessMotion; }, withinMs);
    }
    bool isAskedByFile(const std::string& name, const std::string& text, int withinMs = kInTime) {
        const std::filesystem::path path = std::filesystem::path(folder.path().toStdString()) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
        const DesktopSettings settings(mannersPlaces(), [] { return QDBusConnection(QStringLiteral("none")); },
                                       folder.path(), {});
        const bool asked = test::waitUntil([&] { return by(settings).lessMotion; }, withinMs);
        std::filesystem::remove(path);
        return asked;
    }

    static constexpr int kInTime = 5000, kAWhile = 300;
    test::PrivateBus bus;
    QTemporaryDir folder;
    int changes = 0;
};

/// START-65: Less motion is asked for by what the portal tells of any desktop, and followed while it runs
TEST_F(Settings, AreWhatThePortalTells) {
    EXPECT_TRUE(isAskedBy(told("org.freedesktop.appearance", "reduced-motion", uint{1})));
    EXPECT_TRUE(isAskedBy(told("org.gnome.desktop.interface", "enable-animations", false)));
    EXPECT_TRUE(isAskedBy(told("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0")));
    EXPECT_FALSE(isAskedBy(told("org.freedesktop.appearance", "reduced-motion", uint{0}), kAWhile));
    EXPECT_FALSE(isAskedBy(told("org.gnome.desktop.interface", "enable-animations", true), kAWhile));
    EXPECT_FALSE(isAskedBy(told("org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0.5"), kAWhile));
    EXPECT_FALSE(
        isAskedBy(told("org.gnome.desktop.interface", "enable-animations", QStringList{"false", "false"}), kAWhile));
    EXPECT_FALSE(isAskedBy(QVariant(QStringLiteral("of another shape")), kAWhile));
}

/// START-65
TEST_F(Settings, AreFollowedWhileTheProgramRuns) {
    Portal portal(bus.connect(), told("org.gnome.desktop.interface", "enable-animations", true));
    const auto settings = onBus();
    ASSERT_TRUE(test::waitUntil([&] { return portal.asked > 0; }, 5000));
    portal.changes("org.gnome.desktop.interface", "enable-animations", false);
    EXPECT_TRUE(test::waitUntil([&] { return by(*settings).lessMotion; }, 5000));
    portal.changes("org.gnome.desktop.interface", "document-font-name", "Sans 11");
    portal.changes("org.gnome.desktop.interface", "font-name", "Fixed 14");
    portal.changes("org.freedesktop.appearance", "color-scheme", uint{1});
    EXPECT_TRUE(test::waitUntil([&] { return by(*settings).dark == true; }, 5000));
    EXPECT_EQ(by(*settings).fontFamily, "Fixed");
    EXPECT_EQ(changes, 4) << "one for each that counts, and one for the first answer";
    portal.changes("org.gnome.desktop.interface", "enable-animations", true);
    EXPECT_TRUE(test::waitUntil([&] { return !by(*settings).lessMotion; }, 5000));
}

/// START-66: Where no portal tells, the settings files of GTK and KDE do; what is no such file asks for nothing
TEST_F(Settings, AreWhatTheUsersFilesSay) {
    EXPECT_TRUE(isAskedByFile("gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n"));
    EXPECT_TRUE(isAskedByFile("gtk-3.0/settings.ini", "[Settings]\r\n gtk-enable-animations = 0 \r\n"));
    EXPECT_TRUE(isAskedByFile("kdeglobals", "[General]\nname=x\n[KDE]\nAnimationDurationFactor=0\n"));
    EXPECT_FALSE(isAskedByFile("gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=1\n", kAWhile));
    EXPECT_FALSE(isAskedByFile("gtk-4.0/settings.ini", "[Other]\ngtk-enable-animations=0\n", kAWhile));
    EXPECT_FALSE(isAskedByFile("kdeglobals", "[KDE]\nAnimationDurationFactor=1\n", kAWhile));
    EXPECT_FALSE(
        isAskedByFile("kdeglobals", "[KDE]\nAnimationDurationFactor\n=0\n" + std::string(1000, '\0'), kAWhile));
    EXPECT_FALSE(
        isAskedByFile("kdeglobals", std::string(300 * 1024, '\n') + "[KDE]\nAnimationDurationFactor=0\n", kAWhile));
    ASSERT_EQ(mkfifo(qPrintable(folder.filePath("kdeglobals")), 0600), 0);
    EXPECT_TRUE(isAskedByFile("gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n")) << "no pipe is opened";
}

}  // namespace
}  // namespace corvane
