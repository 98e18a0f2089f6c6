// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/mpris.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPointer>
#include <QTimer>
#include <utility>

#include "linux/bus/mpris_description.h"
#include "linux/windowing/form_window.h"

namespace corvane {

namespace {

const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kName = QStringLiteral("org.mpris.MediaPlayer2.corvane");

constexpr int kSettleMs = 150;  ///< the first picture and the first sound come before the bus
constexpr uint kDoNotQueue = 4;
constexpr uint kNameIsTaken = 3;

QDBusMessage busCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

QString statusText(MediaState::Status status) {
    if (status == MediaState::Status::Stopped) return QStringLiteral("Stopped");
    return status == MediaState::Status::Playing ? QStringLiteral("Playing") : QStringLiteral("Paused");
}

/// The file's address, byte for byte.
QString addressOf(const std::string& path) {
    return QString::fromLatin1("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

QDBusMessage replyTo(const QDBusMessage& message, MediaSession::Answer answer) {
    using Answer = MediaSession::Answer;
    switch (answer) {
        case Answer::Busy:
            return message.createErrorReply(
                QDBusError::Failed, QStringLiteral("The player's editor or settings are open, or it is ending"));
        case Answer::NotSupported:
            return message.createErrorReply(QDBusError::NotSupported, QStringLiteral("The player cannot do this"));
        case Answer::Invalid:
            return message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("The value cannot be used"));
        case Answer::Done:
            break;
    }
    return message.createReply();
}

}  // namespace

Mpris::Mpris(MediaSession& session, EventLoop& loop, Bus bus)
    : session_(session), loop_(loop), source_(std::move(bus)) {
    session_.Changed.tie([this] { follow(); });
    session_.BoxUp.tie([this] { reply(Answer::Done); });  // who called is not kept waiting for the user
    session_.Seeked.tie([this](std::int64_t positionUs) { tellSeeked(positionUs); });
}

Mpris::~Mpris() {
    session_.Changed.tie({});
    session_.BoxUp.tie({});
    session_.Seeked.tie({});
    withdraw();
}

void Mpris::startNoBus() {
    const QByteArray place = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    struct stat status {};
    const bool isThere = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
                         (stat(place.constData(), &status) == 0 && S_ISSOCK(status.st_mode));
    if (!isThere) qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
}

void Mpris::follow() {
    const bool ready = session_.state().ready;
    if (ready && !begun_) {
        begun_ = true;
        QTimer::singleShot(kSettleMs, this, [this] {
            if (session_.state().ready) serve();
        });
    } else if (!ready) {
        withdraw();
    } else if (bus_) {
        tellChanges();
    }
}

void Mpris::serve() {
    QDBusConnection bus = source_();
    if (!bus.isConnected() || !bus.registerVirtualObject(kPath, this)) return;
    bus_.emplace(std::move(bus));
    told_ = playerProperties();
    takeName(kName, kName + QStringLiteral(".instance%1").arg(getpid()));
}

void Mpris::withdraw() {
    if (!bus_) return;
    bus_->unregisterObject(kPath);
    if (!name_.isEmpty()) {
        QDBusMessage release = busCall(QStringLiteral("ReleaseName"));
        bus_->call(release << name_, QDBus::NoBlock);
    }
    bus_.reset();
}

void Mpris::takeName(const QString& name, const QString& otherwise) {
    name_ = name;
    QDBusMessage request = busCall(QStringLiteral("RequestName"));
    auto* const answer = new QDBusPendingCallWatcher(bus_->asyncCall(request << name << kDoNotQueue), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, otherwise] {
        answer->deleteLater();
        const QDBusPendingReply<uint> reply = *answer;
        if (!reply.isError() && reply.value() != kNameIsTaken) return;
        name_.clear();
        if (bus_ && !otherwise.isEmpty()) takeName(otherwise, {});
    });
}

QString Mpris::introspect(const QString& /*path*/) const { return QString::fromLatin1(kMprisDescription); }

bool Mpris::handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) {
    if (!bus_ || message.type() != QDBusMessage::MethodCallMessage) return false;
    if (message.interface() == kProperties) {
        callProperties(message);
        return true;
    }
    const auto command = commandOfCall(message.interface(), message.member(), message.signature(), message.arguments());
    if (command) {
        runOrRefuse(message, *command);
        return true;
    }
    if (message.interface() != kMprisPlayer && message.interface() != kMprisRoot) return false;  // the library answers
    bus_->send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such call")));
    return true;
}

void Mpris::runOrRefuse(const QDBusMessage& message, const MprisCommand& command) {
    if (command.run) {
        run(message, command.run);
    } else {
        bus_->send(message.createErrorReply(QDBusError::InvalidArgs, command.refusal));
    }
}

void Mpris::run(const QDBusMessage& message, Command command) {
    message.setDelayedReply(true);
    loop_.post([self = QPointer<Mpris>(this), message, command = std::move(command)] {
        if (!self) return;
        self->running_ = message;
        self->reply(command(self->session_));
    });
}

void Mpris::reply(Answer answer) {
    const auto message = std::exchange(running_, std::nullopt);
    if (message && bus_ && message->isReplyRequired()) bus_->send(replyTo(*message, answer));
}

void Mpris::callProperties(const QDBusMessage& message) {
    const QVariantList given = message.arguments();
    const QString interface = given.value(0).toString();
    const QString signature = message.signature();
    const bool isGetAll = message.member() == "GetAll" && signature == "s";
    const bool isGet = message.member() == "Get" && signature == "ss";
    const bool isSet = message.member() == "Set" && signature == "ssv";
    if (!isGetAll && !isGet && !isSet) {
        bus_->send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such call")));
        return;
    }
    if (interface != kMprisRoot && interface != kMprisPlayer) {
        bus_->send(message.createErrorReply(QDBusError::UnknownInterface, QStringLiteral("No such interface")));
        return;
    }
    QVariantMap all = interface == kMprisRoot ? rootProperties() : playerProperties();
    if (interface == kMprisPlayer) all[QStringLiteral("Position")] = qlonglong{session_.positionUs()};
    if (isGetAll) {
        bus_->send(message.createReply(QVariant(all)));
        return;
    }
    const QString property = given.value(1).toString();
    if (!all.contains(property)) {
        bus_->send(message.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("No such property")));
    } else if (isGet) {
        bus_->send(message.createReply(QVariant::fromValue(QDBusVariant(all[property]))));
    } else {
        set(message, interface == kMprisPlayer ? property : QString(), given.value(2).value<QDBusVariant>().variant());
    }
}

void Mpris::set(const QDBusMessage& message, const QString& property, const QVariant& value) {
    auto command = commandOfProperty(property, value);
    if (!command) {
        bus_->send(message.createErrorReply(QDBusError::PropertyReadOnly, QStringLiteral("It can only be read")));
        return;
    }
    if (property == "Shuffle" && command->run && value.toBool()) {
        // Who switched it on and shows it so hears that it is off again.
        command->run = [this, shuffle = std::move(command->run)](MediaSession& session) {
            const Answer answer = shuffle(session);
            if (answer == Answer::Done && bus_) tellProperties({{QStringLiteral("Shuffle"), false}});
            return answer;
        };
    }
    runOrRefuse(message, *command);
}

QVariantMap Mpris::rootProperties() const {
    QStringList types;
    for (const std::string& type : session_.mimeTypes()) types.append(QString::fromStdString(type));
    return {{"CanQuit", true},
            {"CanRaise", true},
            {"HasTrackList", false},
            {"Identity", "Corvane"},
            {"DesktopEntry", "corvane"},
            {"SupportedUriSchemes", QStringList("file")},
            {"SupportedMimeTypes", types}};
}

QVariantMap Mpris::playerProperties() const {
    const MediaState& state = session_.state();
    return {{"PlaybackStatus", statusText(state.status)},
            {"LoopStatus", state.repeat ? "Playlist" : "None"},
            {"Rate", 1.0},
            {"Shuffle", false},
            {"Metadata", metadata()},
            {"Volume", static_cast<double>(state.volume) / mdlDefinePublic::kFullVolume},
            {"MinimumRate", 1.0},
            {"MaximumRate", 1.0},
            {"CanGoNext", state.canGoNext},
            {"CanGoPrevious", state.canGoPrevious},
            {"CanPlay", state.canPlay},
            {"CanPause", state.canPause},
            {"CanSeek", state.canSeek},
            {"CanControl", true}};
}

QVariantMap Mpris::metadata() const {
    const MediaState& state = session_.state();
    QVariantMap data;
    if (state.track == 0) return data;
    const QDBusObjectPath track(kMprisTrackPath + QString::number(state.track));
    data[QStringLiteral("mpris:trackid")] = QVariant::fromValue(track);
    if (state.lengthUs > 0) data[QStringLiteral("mpris:length")] = qlonglong{state.lengthUs};
    data[QStringLiteral("xesam:title")] = toQString(state.title);
    data[QStringLiteral("xesam:url")] = addressOf(state.path);
    const int number = state.albumNumber > 0 ? state.albumNumber : state.number;
    if (number > 0) data[QStringLiteral("xesam:trackNumber")] = number;
    if (!state.artist.empty()) data[QStringLiteral("xesam:artist")] = QStringList(toQString(state.artist));
    if (!state.album.empty()) data[QStringLiteral("xesam:album")] = toQString(state.album);
    if (!state.cover.empty()) data[QStringLiteral("mpris:artUrl")] = addressOf(state.cover);
    return data;
}

void Mpris::tellChanges() {
    const QVariantMap now = playerProperties();
    QVariantMap changed;
    for (auto each = now.begin(); each != now.end(); ++each) {
        if (told_.value(each.key()) != each.value()) changed[each.key()] = each.value();
    }
    told_ = now;
    if (!changed.isEmpty()) tellProperties(changed);
}

void Mpris::tellProperties(const QVariantMap& changed) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kProperties, QStringLiteral("PropertiesChanged"));
    bus_->send(signal << kMprisPlayer << changed << QStringList());
}

void Mpris::tellSeeked(std::int64_t positionUs) {
    if (!bus_) return;
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kMprisPlayer, QStringLiteral("Seeked"));
    bus_->send(signal << qlonglong{positionUs});
}

}  // namespace corvane
