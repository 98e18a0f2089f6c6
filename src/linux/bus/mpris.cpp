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
#include "linux/windowing/input_map.h"
#include "types/media_types.h"

namespace corvane {

namespace {

const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kName = QStringLiteral("org.mpris.MediaPlayer2.corvane");
const QString kTrackPath = QStringLiteral("/corvane/track/");

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

std::uint32_t trackOf(const QString& path) {
    return path.startsWith(kTrackPath) ? path.mid(kTrackPath.size()).toUInt() : 0;
}

MediaSession::Answer openAddress(MediaSession& session, const QString& address) {
    const auto paths = pathsOfUriList(address.toUtf8());
    return paths.empty() ? MediaSession::Answer::NotSupported : session.open(paths.front());
}

/// One call that the interfaces have.
struct Method {
    QString interface;
    QString name;
    QString signature;
    std::function<MediaSession::Answer(MediaSession&, const QVariantList&)> run;
};

const std::vector<Method>& methods() {
    using Session = MediaSession;
    using List = QVariantList;
    static const std::vector<Method> all = {
        {kRoot, "Raise", "", [](Session& s, const List&) { return s.raise(); }},
        {kRoot, "Quit", "", [](Session& s, const List&) { return s.quit(); }},
        {kPlayer, "Next", "", [](Session& s, const List&) { return s.next(); }},
        {kPlayer, "Previous", "", [](Session& s, const List&) { return s.previous(); }},
        {kPlayer, "Pause", "", [](Session& s, const List&) { return s.pause(); }},
        {kPlayer, "PlayPause", "", [](Session& s, const List&) { return s.playPause(); }},
        {kPlayer, "Stop", "", [](Session& s, const List&) { return s.stop(); }},
        {kPlayer, "Play", "", [](Session& s, const List&) { return s.play(); }},
        {kPlayer, "Seek", "x", [](Session& s, const List& given) { return s.seekBy(given[0].toLongLong()); }},
        {kPlayer, "SetPosition", "ox",
         [](Session& s, const List& given) {
             return s.seekTo(trackOf(given[0].value<QDBusObjectPath>().path()), given[1].toLongLong());
         }},
        {kPlayer, "OpenUri", "s", [](Session& s, const List& given) { return openAddress(s, given[0].toString()); }},
    };
    return all;
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
    for (const Method& method : methods()) {
        const bool isMeant = message.interface().isEmpty() || message.interface() == method.interface;
        if (!isMeant || message.member() != method.name) continue;
        if (message.signature() == method.signature) {
            run(message, [&method, given = message.arguments()](MediaSession& s) { return method.run(s, given); });
        } else {
            bus_->send(message.createErrorReply(QDBusError::InvalidArgs,
                                                QStringLiteral("%1 takes \"%2\"").arg(method.name, method.signature)));
        }
        return true;
    }
    if (message.interface() != kPlayer && message.interface() != kRoot) return false;  // the library answers
    bus_->send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such call")));
    return true;
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
    if (interface != kRoot && interface != kPlayer) {
        bus_->send(message.createErrorReply(QDBusError::UnknownInterface, QStringLiteral("No such interface")));
        return;
    }
    QVariantMap all = interface == kRoot ? rootProperties() : playerProperties();
    if (interface == kPlayer) all[QStringLiteral("Position")] = qlonglong{session_.positionUs()};
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
        set(message, interface == kPlayer ? property : QString(), given.value(2).value<QDBusVariant>().variant());
    }
}

void Mpris::set(const QDBusMessage& message, const QString& property, const QVariant& value) {
    const bool isNumber = value.typeId() == QMetaType::Double;
    const bool isText = value.typeId() == QMetaType::QString;
    const bool isFlag = value.typeId() == QMetaType::Bool;
    if (property == "Volume" && isNumber) {
        run(message, [level = value.toDouble()](MediaSession& s) { return s.setVolume(level); });
    } else if (property == "Rate" && isNumber) {
        run(message, [rate = value.toDouble()](MediaSession& s) { return s.setRate(rate); });
    } else if (property == "Shuffle" && isFlag) {
        run(message, [this, on = value.toBool()](MediaSession& s) {
            const Answer answer = s.setShuffle(on);
            // Who switched it on and shows it so hears that it is off again.
            if (on && answer == Answer::Done && bus_) tellProperties({{QStringLiteral("Shuffle"), false}});
            return answer;
        });
    } else if (property == "LoopStatus" && isText) {
        run(message, [loop = value.toString()](MediaSession& s) {
            if (loop == "None") return s.setLoop(MediaSession::Loop::None);
            if (loop == "Playlist") return s.setLoop(MediaSession::Loop::Playlist);
            return loop == "Track" ? s.setLoop(MediaSession::Loop::Track) : Answer::Invalid;
        });
    } else if (property == "Volume" || property == "Rate" || property == "Shuffle" || property == "LoopStatus") {
        bus_->send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("A value of another type")));
    } else {
        bus_->send(message.createErrorReply(QDBusError::PropertyReadOnly, QStringLiteral("It can only be read")));
    }
}

QVariantMap Mpris::rootProperties() const {
    QStringList types;
    for (const std::string& type : mimeTypes()) types.append(QString::fromStdString(type));
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
    const QDBusObjectPath track(kTrackPath + QString::number(state.track));
    data[QStringLiteral("mpris:trackid")] = QVariant::fromValue(track);
    if (state.lengthUs > 0) data[QStringLiteral("mpris:length")] = qlonglong{state.lengthUs};
    data[QStringLiteral("xesam:title")] = toQString(state.title);
    data[QStringLiteral("xesam:url")] = addressOf(state.path);
    if (state.number > 0) data[QStringLiteral("xesam:trackNumber")] = state.number;
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
    bus_->send(signal << kPlayer << changed << QStringList());
}

void Mpris::tellSeeked(std::int64_t positionUs) {
    if (!bus_) return;
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kPlayer, QStringLiteral("Seeked"));
    bus_->send(signal << qlonglong{positionUs});
}

}  // namespace corvane
