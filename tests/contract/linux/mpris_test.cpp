// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/mpris.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QXmlStreamReader>
#include <limits>
#include <memory>
#include <random>
#include <set>

#include "contract/linux/private_bus.h"
#include "fake/player_fixture.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kName = QStringLiteral("org.mpris.MediaPlayer2.corvane");

/// Keeps what the player tells by itself.
class Ear : public QObject {
    Q_OBJECT
public:
    std::vector<qlonglong> seeked;
    std::vector<QVariantMap> changes;
    QVariantMap last;  ///< the last value of each property that was told

public slots:
    void onSeeked(qlonglong position) { seeked.push_back(position); }
    void onChanged(const QString& interface, const QVariantMap& changed, const QStringList& /*invalid*/) {
        if (interface != kPlayer) return;
        changes.push_back(changed);
        last.insert(changed);
    }
};

/// A player on the machine in memory, offered on a bus of its own and called from another connection.
class MprisContract : public PlayerFixture {
protected:
    MprisContract() {
        for (const char* name : {"/m/one.wav", "/m/two.wav", "/m/three.wav"}) machine.addSound(name, 60000);
    }

    /// The panel stands with a list of three sounds; the name is on the bus.
    void offer() {
        setUpPanel();
        setList({"/m/one.wav", "/m/two.wav", "/m/three.wav"});
        look();
        ASSERT_TRUE(waitFor([this] { return names().contains(kName); }));
        client.connect(kName, kPath, kPlayer, QStringLiteral("Seeked"), &ear, SLOT(onSeeked(qlonglong)));
        client.connect(kName, kPath, kProperties, QStringLiteral("PropertiesChanged"), &ear,
                       SLOT(onChanged(QString, QVariantMap, QStringList)));
        names();  // an answer behind both: the bus knows who listens
    }
    void look() {
        machine.loop.enter([] {});
        machine.settle();
    }
    bool waitFor(const std::function<bool()>& condition, int atMostMs = 5000) {
        return test::waitUntil(
            [&] {
                machine.settle();
                return condition();
            },
            atMostMs);
    }
    QDBusMessage await(const QDBusPendingCall& pending) {
        EXPECT_TRUE(waitFor([&] { return pending.isFinished(); })) << "no answer";
        return pending.reply();
    }
    QDBusMessage call(const QString& method, const QVariantList& given = {}, const QString& interface = kPlayer) {
        QDBusMessage message = QDBusMessage::createMethodCall(kName, kPath, interface, method);
        message.setArguments(given);
        return await(client.asyncCall(message));
    }
    QDBusMessage set(const QString& property, const QVariant& value) {
        return call(QStringLiteral("Set"), {kPlayer, property, QVariant::fromValue(QDBusVariant(value))}, kProperties);
    }
    QVariant get(const QString& property, const QString& interface = kPlayer) {
        const QDBusMessage reply = call(QStringLiteral("Get"), {interface, property}, kProperties);
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }
    QVariantMap getAll(const QString& interface) {
        const QDBusMessage reply = call(QStringLiteral("GetAll"), {interface}, kProperties);
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }
    QVariantMap metadata() { return qdbus_cast<QVariantMap>(get(QStringLiteral("Metadata"))); }
    QStringList names() {
        const QDBusMessage ask =
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
        return await(client.asyncCall(ask)).arguments().value(0).toStringList();
    }
    static std::string errorOf(const QDBusMessage& reply) {
        return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName().toStdString() : "";
    }

    test::PrivateBus bus;
    MediaSession session{player};
    Mpris mpris{session, machine.loop, [this] { return bus.connect(); }};
    QDBusConnection client = bus.connect();
    Ear ear;
};

TEST_F(MprisContract, TheNameIsThereWhileThePanelIs) {
    EXPECT_FALSE(names().contains(kName));
    offer();
    EXPECT_EQ(errorOf(call(QStringLiteral("Quit"), {}, kRoot)), "");
    EXPECT_TRUE(waitFor([this] { return !names().contains(kName); }));
}

TEST_F(MprisContract, ANameThatIsTakenGetsTheProcesssNumber) {
    QDBusConnection other = bus.connect();
    ASSERT_TRUE(other.registerService(kName));
    setUpPanel();
    look();
    const QString second = kName + QStringLiteral(".instance%1").arg(getpid());
    EXPECT_TRUE(waitFor([&] { return names().contains(second); }));
}

TEST_F(MprisContract, ABusThatIsNotThereIsDoneWithout) {
    Mpris alone(session, machine.loop, [] { return QDBusConnection(QStringLiteral("none")); });
    setUpPanel();
    setList({"/m/one.wav"});
    look();
    waitFor([] { return false; }, 300);
    click(kPlay);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(session.state().status, MediaState::Status::Playing);
}

TEST_F(MprisContract, TheRootInterfaceIsComplete) {
    offer();
    const QVariantMap all = getAll(kRoot);
    EXPECT_EQ(all.keys(), QStringList({"CanQuit", "CanRaise", "DesktopEntry", "HasTrackList", "Identity",
                                       "SupportedMimeTypes", "SupportedUriSchemes"}));
    EXPECT_EQ(all["CanQuit"], true);
    EXPECT_EQ(all["CanRaise"], true);
    EXPECT_EQ(all["HasTrackList"], false);
    EXPECT_EQ(all["Identity"], "Corvane");
    EXPECT_EQ(all["DesktopEntry"], "corvane");
    EXPECT_EQ(all["SupportedUriSchemes"].toStringList(), QStringList("file"));
}

/// The desktop starts the player with its conveniences.
TEST_F(MprisContract, TheTypesAreThoseOfTheDesktopEntry) {
    player.conveniences = kAllConveniences;
    player.types.addWhereThere(typesOfToday(), [](const MediaType& /*type*/) { return true; });
    offer();
    const QStringList types = getAll(kRoot)["SupportedMimeTypes"].toStringList();
    QFile file(QStringLiteral(CORVANE_SOURCE_DIR "/packaging/corvane.desktop"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList listed;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith("MimeType=")) listed = QString::fromLatin1(line.mid(9)).split(';', Qt::SkipEmptyParts);
    }
    EXPECT_EQ(std::set<QString>(types.begin(), types.end()), std::set<QString>(listed.begin(), listed.end()));
    EXPECT_EQ(types.size(), listed.size());
}

TEST_F(MprisContract, ThePlayerInterfaceIsCompleteAndOfTheRightTypes) {
    offer();
    click(kPlay);
    const QVariantMap all = getAll(kPlayer);
    const std::vector<std::pair<const char*, int>> wanted = {
        {"PlaybackStatus", QMetaType::QString}, {"LoopStatus", QMetaType::QString}, {"Rate", QMetaType::Double},
        {"Shuffle", QMetaType::Bool},           {"Volume", QMetaType::Double},      {"Position", QMetaType::LongLong},
        {"MinimumRate", QMetaType::Double},     {"MaximumRate", QMetaType::Double}, {"CanGoNext", QMetaType::Bool},
        {"CanGoPrevious", QMetaType::Bool},     {"CanPlay", QMetaType::Bool},       {"CanPause", QMetaType::Bool},
        {"CanSeek", QMetaType::Bool},           {"CanControl", QMetaType::Bool}};
    for (const auto& [name, type] : wanted) {
        EXPECT_EQ(all[QLatin1String(name)].typeId(), type) << name;
        EXPECT_EQ(get(QLatin1String(name)).typeId(), type) << name;
    }
    EXPECT_EQ(all.size(), static_cast<qsizetype>(wanted.size()) + 1) << "and the metadata";
    EXPECT_EQ(all["Rate"], 1.0);
    EXPECT_EQ(all["MinimumRate"], 1.0);
    EXPECT_EQ(all["MaximumRate"], 1.0);
    EXPECT_EQ(all["CanControl"], true);
}

TEST_F(MprisContract, MetadataHasTheTypesOfTheDocument) {
    offer();
    QVariantMap data = metadata();
    EXPECT_FALSE(data.contains("mpris:length")) << "it is not open";
    click(kPlay);
    data = metadata();
    EXPECT_EQ(data["mpris:trackid"].typeId(), QMetaType::fromType<QDBusObjectPath>().id());
    EXPECT_TRUE(data["mpris:trackid"].value<QDBusObjectPath>().path().startsWith("/corvane/track/"));
    EXPECT_EQ(data["mpris:length"], qlonglong{60'000'000});
    EXPECT_EQ(data["mpris:length"].typeId(), QMetaType::LongLong);
    EXPECT_EQ(data["xesam:title"], "one");
    EXPECT_EQ(data["xesam:url"], "file:///m/one.wav");
    EXPECT_EQ(data["xesam:trackNumber"], 1);
    EXPECT_EQ(data["xesam:trackNumber"].typeId(), QMetaType::Int);
    player.gFileCount = 0;
    click(kStop);
    EXPECT_TRUE(metadata().isEmpty()) << "there is no track";
}

/// TEXT-11
TEST_F(MprisContract, TextsOfTagsHaveTheTypesOfTheDocument) {
    player.conveniences.texts = true;
    machine.texts.files["/m/one.wav"] = {"Title", "Artist", "Album", 7, std::make_shared<CoverFile>("/m/a b.jpg")};
    offer();
    click(kPlay);
    look();
    const QVariantMap data = metadata();
    EXPECT_EQ(data["xesam:title"], "Title");
    EXPECT_EQ(data["xesam:artist"].typeId(), QMetaType::QStringList);
    EXPECT_EQ(data["xesam:artist"].toStringList(), QStringList("Artist"));
    EXPECT_EQ(data["xesam:album"], "Album");
    EXPECT_EQ(data["xesam:trackNumber"], 7) << "on its album";
    EXPECT_EQ(data["mpris:artUrl"], "file:///m/a%20b.jpg");
}

TEST_F(MprisContract, AnAddressKeepsEveryByte) {
    machine.addSound("/m/a b#\xE9%.wav", 1000);
    offer();
    setList({"/m/a b#\xE9%.wav"});
    look();
    EXPECT_EQ(metadata()["xesam:url"], "file:///m/a%20b%23%E9%25.wav");
    EXPECT_EQ(errorOf(call(QStringLiteral("OpenUri"), {"file:///m/a%20b%23%E9%25.wav"})), "");
    EXPECT_EQ(player.openedPath, "/m/a b#\xE9%.wav");
}

TEST_F(MprisContract, EachCallReachesTheSession) {
    offer();
    EXPECT_EQ(errorOf(call(QStringLiteral("Play"))), "");
    EXPECT_EQ(state(), "playing");
    call(QStringLiteral("Pause"));
    EXPECT_EQ(state(), "paused");
    call(QStringLiteral("PlayPause"));
    EXPECT_EQ(state(), "playing");
    call(QStringLiteral("Next"));
    EXPECT_EQ(player.gFileIndex, 1);
    call(QStringLiteral("Previous"));
    EXPECT_EQ(player.gFileIndex, 0);
    call(QStringLiteral("Seek"), {qlonglong{5'000'000}});
    EXPECT_EQ(get(QStringLiteral("Position")), qlonglong{5'000'000});
    const QVariant track = metadata()["mpris:trackid"];
    call(QStringLiteral("SetPosition"), {track, qlonglong{9'000'000}});
    EXPECT_EQ(get(QStringLiteral("Position")), qlonglong{9'000'000});
    call(QStringLiteral("SetPosition"),
         {QVariant::fromValue(QDBusObjectPath("/org/mpris/MediaPlayer2/TrackList/NoTrack")), qlonglong{1}});
    EXPECT_EQ(get(QStringLiteral("Position")), qlonglong{9'000'000});
    call(QStringLiteral("Stop"));
    EXPECT_EQ(state(), "stopped");
    call(QStringLiteral("OpenUri"), {"file:///m/three.wav"});
    EXPECT_EQ(player.openedPath, "/m/three.wav");
    click(kMinimise);
    EXPECT_EQ(errorOf(call(QStringLiteral("Raise"), {}, kRoot)), "");
    EXPECT_EQ(panel().WindowState.get(), WindowState::Normal);
    EXPECT_TRUE(waitFor([this] { return ear.seeked.size() >= 2; }));
    EXPECT_EQ(ear.seeked[0], 5'000'000);
    EXPECT_EQ(ear.seeked[1], 9'000'000);
}

TEST_F(MprisContract, EachPropertyThatCanBeSetReachesTheSession) {
    offer();
    EXPECT_EQ(errorOf(set(QStringLiteral("Volume"), 0.2)), "");
    EXPECT_EQ(player.gVolume, 3);
    EXPECT_EQ(errorOf(set(QStringLiteral("LoopStatus"), "Playlist")), "");
    EXPECT_TRUE(player.gRepeat);
    EXPECT_EQ(errorOf(set(QStringLiteral("LoopStatus"), "Track")), "org.freedesktop.DBus.Error.NotSupported");
    EXPECT_EQ(errorOf(set(QStringLiteral("LoopStatus"), "Sometimes")), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(errorOf(set(QStringLiteral("LoopStatus"), "None")), "");
    EXPECT_FALSE(player.gRepeat);
    machine.random.numbers = {0.9, 0.0};
    EXPECT_EQ(errorOf(set(QStringLiteral("Shuffle"), true)), "");
    EXPECT_EQ(player.gFilePath[1], "/m/three.wav");
    EXPECT_TRUE(waitFor([this] { return ear.last.contains("Shuffle"); }));
    EXPECT_EQ(ear.last["Shuffle"], false);
    click(kPlay);
    EXPECT_EQ(errorOf(set(QStringLiteral("Rate"), 0.0)), "");
    EXPECT_EQ(state(), "paused");
}

TEST_F(MprisContract, WrongCallsAreAnsweredWithTheirErrors) {
    offer();
    const std::string base = "org.freedesktop.DBus.Error.";
    EXPECT_EQ(errorOf(call(QStringLiteral("Dance"))), base + "UnknownMethod");
    EXPECT_EQ(errorOf(call(QStringLiteral("Next"), {}, QStringLiteral("org.example.Other"))).substr(0, base.size()),
              base);
    EXPECT_EQ(errorOf(call(QStringLiteral("Seek"), {"far"})), base + "InvalidArgs");
    EXPECT_EQ(errorOf(call(QStringLiteral("Next"), {1})), base + "InvalidArgs");
    EXPECT_EQ(errorOf(call(QStringLiteral("Get"), {kPlayer, "Colour"}, kProperties)), base + "UnknownProperty");
    EXPECT_EQ(errorOf(call(QStringLiteral("Get"), {"org.example.Other", "Rate"}, kProperties)),
              base + "UnknownInterface");
    EXPECT_EQ(errorOf(call(QStringLiteral("Get"), {kPlayer}, kProperties)), base + "UnknownMethod");
    EXPECT_EQ(errorOf(set(QStringLiteral("Volume"), "loud")), base + "InvalidArgs");
    EXPECT_EQ(errorOf(set(QStringLiteral("PlaybackStatus"), "Playing")), base + "PropertyReadOnly");
    EXPECT_EQ(errorOf(set(QStringLiteral("Colour"), 1)), base + "UnknownProperty");
    EXPECT_EQ(errorOf(call(QStringLiteral("OpenUri"), {"https://example.org/a.wav"})), base + "NotSupported");
    EXPECT_EQ(errorOf(call(QStringLiteral("OpenUri"), {"file:///m/gone.wav"})), base + "InvalidArgs");
    player.gFileCount = 0;
    look();
    EXPECT_EQ(errorOf(call(QStringLiteral("PlayPause"))), base + "NotSupported");
    EXPECT_TRUE(mediaCalls().empty());
}

TEST_F(MprisContract, CallsAreRefusedWhileTheEditorIsOpenAndReadingIsNot) {
    offer();
    machine.loop.enter([this] { player.forms.load(FormId::FileList); });
    EXPECT_EQ(errorOf(call(QStringLiteral("Play"))), "org.freedesktop.DBus.Error.Failed");
    EXPECT_EQ(errorOf(set(QStringLiteral("Volume"), 1.0)), "org.freedesktop.DBus.Error.Failed");
    EXPECT_EQ(errorOf(call(QStringLiteral("Quit"), {}, kRoot)), "org.freedesktop.DBus.Error.Failed");
    EXPECT_EQ(get(QStringLiteral("PlaybackStatus")), "Stopped");
}

TEST_F(MprisContract, CallsWaitWhileABoxIsUp) {
    offer();
    const QDBusMessage play = QDBusMessage::createMethodCall(kName, kPath, kPlayer, QStringLiteral("Play"));
    auto hold = std::make_unique<EventLoop::Hold>(machine.loop);
    const QDBusPendingCall waiting = client.asyncCall(play);
    EXPECT_EQ(get(QStringLiteral("PlaybackStatus")), "Stopped") << "reading does not wait";
    EXPECT_FALSE(waiting.isFinished());
    hold.reset();
    EXPECT_EQ(errorOf(await(waiting)), "");
    EXPECT_EQ(state(), "playing");
}

TEST_F(MprisContract, ACallWhoseCommandPutsABoxUpIsAnsweredAtOnce) {
    offer();
    setList({"/m/gone.wav"});
    bool answeredInTime = false;
    const QDBusMessage play = QDBusMessage::createMethodCall(kName, kPath, kPlayer, QStringLiteral("Play"));
    const QDBusPendingCall pending = client.asyncCall(play);
    machine.dialogs.whileUp = [&] { answeredInTime = test::waitUntil([&] { return pending.isFinished(); }, 3000); };
    EXPECT_EQ(errorOf(await(pending)), "");
    EXPECT_TRUE(answeredInTime);
}

TEST_F(MprisContract, ChangesAreToldTogetherOnceAndWithoutThePosition) {
    offer();
    click(kPlay);
    ASSERT_TRUE(waitFor([this] { return !ear.changes.empty(); }));
    const QVariantMap first = ear.changes[0];
    EXPECT_EQ(first["PlaybackStatus"], "Playing");
    EXPECT_EQ(first["CanSeek"], true);
    EXPECT_EQ(qdbus_cast<QVariantMap>(first["Metadata"])["mpris:length"], qlonglong{60'000'000});
    EXPECT_FALSE(first.contains("Volume") || first.contains("CanPlay")) << "they have not changed";
    machine.advance(10000);
    click(kVolumeDown);
    ASSERT_TRUE(waitFor([this] { return ear.last.contains("Volume"); }));
    EXPECT_EQ(ear.changes.size(), 2U) << "ten seconds of playing are no change";
    for (const QVariantMap& change : ear.changes) EXPECT_FALSE(change.contains("Position"));
    EXPECT_TRUE(ear.seeked.empty());
}

TEST_F(MprisContract, DescribesItself) {
    offer();
    const QDBusMessage reply =
        call(QStringLiteral("Introspect"), {}, QStringLiteral("org.freedesktop.DBus.Introspectable"));
    QXmlStreamReader xml(reply.arguments().value(0).toString());
    std::set<QString> found;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) found.insert(xml.attributes().value(QStringLiteral("name")).toString());
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    for (const QVariantMap& all : {getAll(kRoot), getAll(kPlayer)}) {
        for (const QString& property : all.keys()) EXPECT_TRUE(found.contains(property)) << property.toStdString();
    }
    for (const char* name : {"Raise", "Quit", "Next", "Previous", "Pause", "PlayPause", "Stop", "Play", "Seek",
                             "SetPosition", "OpenUri", "Seeked", "PropertiesChanged"}) {
        EXPECT_TRUE(found.contains(QLatin1String(name))) << name;
    }
}

/// Made-up arguments: what a caller should send, its limits, and anything else.
class Messages {
public:
    QVariant value() {
        constexpr double kReals[] = {0.0,
                                     1.0,
                                     -1.0,
                                     1e308,
                                     -1e308,
                                     std::numeric_limits<double>::quiet_NaN(),
                                     std::numeric_limits<double>::infinity()};
        constexpr qlonglong kNumbers[] = {
            0, 1, -1, 60'000'000, std::numeric_limits<qlonglong>::max(), std::numeric_limits<qlonglong>::min()};
        switch (below(9)) {
            case 0:
                return kNumbers[below(std::size(kNumbers))];
            case 1:
                return kReals[below(std::size(kReals))];
            case 2:
                return text();
            case 3:
                return QVariant::fromValue(QDBusObjectPath(
                    below(2) == 0 ? QStringLiteral("/corvane/track/%1").arg(below(4)) : QStringLiteral("/")));
            case 4:
                return below(2) == 0;
            case 5:
                return QByteArray(static_cast<qsizetype>(below(3000)), '\xFF');
            case 6:
                return QStringList(static_cast<qsizetype>(below(300)), text());
            case 7:
                return QVariantMap{{text(), text()}, {QStringLiteral("Volume"), 1}};
            default:
                return QVariant::fromValue(QDBusVariant(text()));
        }
    }
    QString text() {
        const QStringList texts{"",
                                "file:///m/two.wav",
                                "file:///m/gone.wav",
                                "file:///%00.wav",
                                "http://127.0.0.1:9/a.wav",
                                "None",
                                "Playlist",
                                "Track",
                                "\u202e\ufeff",
                                QString(90'000, QChar('x'))};
        return texts[static_cast<qsizetype>(below(static_cast<std::size_t>(texts.size())))];
    }
    QString property() {
        const QStringList names{"Volume",   "Rate",    "Shuffle", "LoopStatus", "Position",
                                "Metadata", "CanQuit", "",        "Nothing"};
        return names[static_cast<qsizetype>(below(static_cast<std::size_t>(names.size())))];
    }
    QDBusMessage next() {
        static const QStringList kMethods{"Next", "Previous", "Pause",       "PlayPause", "Stop",
                                          "Play", "Seek",     "SetPosition", "OpenUri",   "Nothing"};
        const auto message = [](const QString& interface, const QString& method, const QVariantList& given) {
            QDBusMessage made = QDBusMessage::createMethodCall(kName, kPath, interface, method);
            made.setArguments(given);
            return made;
        };
        const QString interface = below(5) == 0 ? kRoot : kPlayer;
        if (below(3) == 0)
            return message(kProperties, QStringLiteral("Set"),
                           {interface, property(), QVariant::fromValue(QDBusVariant(value()))});
        if (below(4) == 0) return message(kProperties, QStringLiteral("Get"), {interface, property()});
        QVariantList given;
        for (std::size_t left = below(4); left > 0; --left) given.push_back(value());
        return message(interface, kMethods[static_cast<qsizetype>(below(static_cast<std::size_t>(kMethods.size())))],
                       given);
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::mt19937 random_{14};
};

TEST_F(MprisContract, TwoThousandMadeUpMessagesAreEachAnswered) {
    offer();
    Messages messages;
    std::set<std::string> answers;
    for (int number = 0; number < 2000; ++number) {
        const QDBusMessage message = messages.next();
        QDBusPendingCall pending = client.asyncCall(message);
        ASSERT_TRUE(waitFor([&] { return pending.isFinished(); })) << message.member().toStdString() << number;
        answers.insert(errorOf(pending.reply()));
    }
    EXPECT_GE(answers.size(), 5U) << "done, and refusals of all sorts";
    EXPECT_TRUE(answers.contains(""));
    const double volume = get(QStringLiteral("Volume")).toDouble();
    EXPECT_TRUE(volume >= 0 && volume <= 1) << volume;
    EXPECT_EQ(errorOf(call(QStringLiteral("OpenUri"), {QStringLiteral("file:///m/two.wav")})), "");
    EXPECT_EQ(get(QStringLiteral("PlaybackStatus")).toString(), "Playing");
}

}  // namespace
}  // namespace corvane

#include "mpris_test.moc"
