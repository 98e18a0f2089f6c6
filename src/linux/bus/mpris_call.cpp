// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/mpris_call.h"

#include <QDBusObjectPath>
#include <cstdint>
#include <vector>

#include "linux/windowing/input_map.h"

namespace corvane {

namespace {

using Answer = MediaSession::Answer;
using Loop = MediaSession::Loop;

std::uint32_t trackOf(const QString& path) {
    return path.startsWith(kMprisTrackPath) ? path.mid(kMprisTrackPath.size()).toUInt() : 0;
}

Answer openAddress(MediaSession& session, const QString& address) {
    const auto paths = pathsOfUriList(address.toUtf8());
    return paths.empty() ? Answer::NotSupported : session.open(paths.front());
}

/// One call that the interfaces have.
struct Method {
    QString interface;
    QString name;
    QString signature;
    std::function<Answer(MediaSession&, const QVariantList&)> run;
};

const std::vector<Method>& methods() {
    using Session = MediaSession;
    using List = QVariantList;
    static const std::vector<Method> all = {
        {kMprisRoot, "Raise", "", [](Session& s, const List&) { return s.raise(); }},
        {kMprisRoot, "Quit", "", [](Session& s, const List&) { return s.quit(); }},
        {kMprisPlayer, "Next", "", [](Session& s, const List&) { return s.next(); }},
        {kMprisPlayer, "Previous", "", [](Session& s, const List&) { return s.previous(); }},
        {kMprisPlayer, "Pause", "", [](Session& s, const List&) { return s.pause(); }},
        {kMprisPlayer, "PlayPause", "", [](Session& s, const List&) { return s.playPause(); }},
        {kMprisPlayer, "Stop", "", [](Session& s, const List&) { return s.stop(); }},
        {kMprisPlayer, "Play", "", [](Session& s, const List&) { return s.play(); }},
        {kMprisPlayer, "Seek", "x", [](Session& s, const List& given) { return s.seekBy(given[0].toLongLong()); }},
        {kMprisPlayer, "SetPosition", "ox",
         [](Session& s, const List& given) {
             return s.seekTo(trackOf(given[0].value<QDBusObjectPath>().path()), given[1].toLongLong());
         }},
        {kMprisPlayer, "OpenUri", "s",
         [](Session& s, const List& given) { return openAddress(s, given[0].toString()); }},
    };
    return all;
}

Answer setLoop(MediaSession& session, const QString& loop) {
    if (loop == "None") return session.setLoop(Loop::None);
    if (loop == "Playlist") return session.setLoop(Loop::Playlist);
    return loop == "Track" ? session.setLoop(Loop::Track) : Answer::Invalid;
}

}  // namespace

std::optional<MprisCommand> commandOfCall(const QString& interface, const QString& member, const QString& signature,
                                          const QVariantList& given) {
    for (const Method& method : methods()) {
        const bool isMeant = interface.isEmpty() || interface == method.interface;
        if (!isMeant || member != method.name) continue;
        if (signature != method.signature)
            return MprisCommand{{}, QStringLiteral("%1 takes \"%2\"").arg(method.name, method.signature)};
        return MprisCommand{[&method, given](MediaSession& session) { return method.run(session, given); }, {}};
    }
    return std::nullopt;
}

std::optional<MprisCommand> commandOfProperty(const QString& property, const QVariant& value) {
    const bool isNumber = value.typeId() == QMetaType::Double;
    const bool isText = value.typeId() == QMetaType::QString;
    const bool isFlag = value.typeId() == QMetaType::Bool;
    if (property == "Volume" && isNumber)
        return MprisCommand{[level = value.toDouble()](MediaSession& s) { return s.setVolume(level); }, {}};
    if (property == "Rate" && isNumber)
        return MprisCommand{[rate = value.toDouble()](MediaSession& s) { return s.setRate(rate); }, {}};
    if (property == "Shuffle" && isFlag)
        return MprisCommand{[on = value.toBool()](MediaSession& s) { return s.setShuffle(on); }, {}};
    if (property == "LoopStatus" && isText)
        return MprisCommand{[loop = value.toString()](MediaSession& s) { return setLoop(s, loop); }, {}};
    if (property == "Volume" || property == "Rate" || property == "Shuffle" || property == "LoopStatus")
        return MprisCommand{{}, QStringLiteral("A value of another type")};
    return std::nullopt;
}

}  // namespace corvane
