// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <vector>

#include "linux/qt_post.h"
#include "workers/worker.h"

namespace corvane {

/// Where one of the user's settings is told.
struct SettingPlace {
    const char* file;   ///< in the folder of the user's settings; null: told by the portal; kBySettingsManager
    const char* group;  ///< of the portal, or of the file
    const char* key;

    /// What it is known by in the values.
    QString name() const;
};
/// Told by the manager of the display's settings (XSETTINGS), without a group.
inline constexpr const char* kBySettingsManager = "X";

/// What the user has set on the desktop, of some places: what its portal tells on the user's message bus, followed
/// while the program runs, what a manager of the display tells, and what stands in the settings files of GTK and KDE,
/// read once by a worker. Nothing is waited for: until an answer comes nothing is known. Lives on the user-interface
/// thread.
class DesktopSettings : public QObject {
    Q_OBJECT

public:
    using Bus = std::function<QDBusConnection()>;
    /// As the portal tells them: values by key by group.
    using Groups = QMap<QString, QVariantMap>;

    /// A portal that does not run is not started. folder: where the files lie; changed: values() has.
    DesktopSettings(std::vector<SettingPlace> places, const Bus& bus, const QString& folder,
                    std::function<void()> changed);
    ~DesktopSettings() override { post_.stop(); }

    const QVariantMap& values() const { return known_; }
    /// What a manager of the display tells now: all of it, by key. What it told before and does not any more is gone.
    void takeManaged(const QVariantMap& told);
    /// The folder of the user's settings, by the environment.
    static QString userFolder();

private slots:
    void settingChanged(const QDBusMessage& told);

private:
    void ask();
    void take(const Groups& told);
    void set(const QVariantMap& values);

    const std::vector<SettingPlace> places_;
    QDBusConnection bus_;
    std::function<void()> changed_;
    QVariantMap known_;
    QtPost post_;
    Worker worker_;
};

}  // namespace corvane
