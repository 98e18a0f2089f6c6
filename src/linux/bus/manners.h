// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantMap>
#include <optional>
#include <vector>

#include "linux/bus/desktop_settings.h"

namespace corvane {

/// How the user wants programs to look and behave on this desktop. What is empty or 0 nobody has said.
struct Manners {
    bool lessMotion = false;
    std::optional<bool> dark;  ///< false: light was asked for
    bool highContrast = false;
    QString fontFamily;
    double fontPoints = 0;
    double textScale = 1;
    int doubleClickMs = 0;
    int dragPixels = 0;
    std::optional<int> cursorFlashMs;  ///< on and off once; 0: it does not blink

    bool operator==(const Manners&) const = default;
};

/// The settings that say so, of any desktop.
std::vector<SettingPlace> mannersPlaces();

/// By the values of those: where several say something of one, the desktop's own before those for programs of others,
/// what is followed before what was read once. What makes no sense, or is no size that a person sets, is not said.
Manners mannersBy(const QVariantMap& values);

}  // namespace corvane
