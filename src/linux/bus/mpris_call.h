// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>
#include <functional>
#include <optional>

#include "engine/media_session.h"

namespace corvane {

// What MPRIS's calls and properties ask of the player. Whatever another program sends comes in here, with the types
// that the bus has made of it.

/// What a call asks for; without `run` it is refused, with values that it does not take.
struct MprisCommand {
    std::function<MediaSession::Answer(MediaSession&)> run;
    QString refusal;  ///< why, in words
};

/// The empty interface stands for any. Empty: there is no such call. `signature`: the types of `given`, as the bus
/// writes them.
std::optional<MprisCommand> commandOfCall(const QString& interface, const QString& member, const QString& signature,
                                          const QVariantList& given);

/// Of setting a property of the player. Empty: it can only be read, or there is none of that name.
std::optional<MprisCommand> commandOfProperty(const QString& property, const QVariant& value);

inline const QString kMprisRoot = QStringLiteral("org.mpris.MediaPlayer2");
inline const QString kMprisPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
inline const QString kMprisTrackPath = QStringLiteral("/corvane/track/");

}  // namespace corvane
