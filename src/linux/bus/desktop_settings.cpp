// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/desktop_settings.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QTimer>
#include <cstring>
#include <utility>

namespace corvane {

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
constexpr qsizetype kLongestValue = 1000;

bool isManaged(const SettingPlace& place) {
    return place.file != nullptr && std::strcmp(place.file, kBySettingsManager) == 0;
}

/// What others tell is a text, a number or a switch; anything else is as if it were not told.
bool isPlain(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QString:
            return value.toString().size() <= kLongestValue;
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Double:
            return true;
        default:
            return false;
    }
}

/// The value of a key in a file of groups; "" where there is none. Such files are short: of a longer one nothing is
/// read.
QString valueIn(const QString& path, const SettingPlace& place) {
    constexpr qint64 kLongest = 256 * 1024;
    QFile file(path);
    // What is no file, such as a pipe, would be waited for.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kLongest) return {};
    QString group;
    for (const QString& each : QString::fromUtf8(file.read(kLongest)).split(QLatin1Char('\n'))) {
        const QString line = each.trimmed();
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) group = line.mid(1, line.size() - 2);
        if (group != QLatin1String(place.group)) continue;
        const qsizetype middle = line.indexOf(QLatin1Char('='));
        if (middle > 0 && line.left(middle).trimmed() == QLatin1String(place.key))
            return line.mid(middle + 1).trimmed();
    }
    return {};
}

}  // namespace

QString SettingPlace::name() const {
    QString text = QLatin1String(file == nullptr ? "portal" : file);
    for (const char* part : {group, key}) text += QLatin1Char('|') + QLatin1String(part);
    return text;
}

QString DesktopSettings::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

DesktopSettings::DesktopSettings(std::vector<SettingPlace> places, const Bus& bus, const QString& folder,
                                 std::function<void()> changed)
    : places_(std::move(places)), bus_(bus()), changed_(std::move(changed)) {
    worker_.start([this, post = post_, places = places_, folder](const Worker::GiveUp& givenUp) {
        QVariantMap found;
        for (const SettingPlace& place : places) {
            if (givenUp || place.file == nullptr || isManaged(place)) continue;
            const QString value = valueIn(folder + QLatin1Char('/') + QLatin1String(place.file), place);
            if (!value.isEmpty()) found[place.name()] = value;
        }
        if (!found.isEmpty()) post([this, found] { set(found); });
    });
    // What is followed is told from the event loop on.
    if (bus_.isConnected()) QTimer::singleShot(0, this, [this] { ask(); });
}

void DesktopSettings::ask() {
    bus_.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QDBusMessage)));
    QStringList groups;
    for (const SettingPlace& place : places_) {
        const QString group = QLatin1String(place.group);
        if (place.file == nullptr && !groups.contains(group)) groups << group;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
    call.setAutoStartService(false);
    call << groups;
    auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusMessage reply = answer->reply();
        if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a{sa{sv}}")) return;
        Groups told;
        reply.arguments().front().value<QDBusArgument>() >> told;
        take(told);
    });
}

void DesktopSettings::take(const Groups& told) {
    QVariantMap values;
    for (const SettingPlace& place : places_) {
        if (place.file != nullptr) continue;
        const QVariant now = told.value(QLatin1String(place.group)).value(QLatin1String(place.key));
        if (isPlain(now)) values[place.name()] = now;
    }
    set(values);
}

void DesktopSettings::settingChanged(const QDBusMessage& told) {
    if (told.signature() != QLatin1String("ssv")) return;
    const QVariantList said = told.arguments();
    take({{said[0].toString(), {{said[1].toString(), said[2].value<QDBusVariant>().variant()}}}});
}

void DesktopSettings::takeManaged(const QVariantMap& told) {
    const QVariantMap before = known_;
    for (const SettingPlace& place : places_) {
        if (!isManaged(place)) continue;
        const QVariant now = told.value(QLatin1String(place.key));
        if (isPlain(now)) {
            known_[place.name()] = now;
        } else {
            known_.remove(place.name());
        }
    }
    if (known_ != before && changed_) changed_();
}

void DesktopSettings::set(const QVariantMap& values) {
    const QVariantMap before = known_;
    known_.insert(values);
    if (known_ != before && changed_) changed_();
}

}  // namespace corvane
