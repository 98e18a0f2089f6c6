// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/form_host.h"
#include "engine/known_texts.h"
#include "engine/list_reading.h"
#include "engine/mdlDefinePublic.h"
#include "engine/media_host.h"
#include "engine/remembered.h"
#include "platform/ports.h"
#include "types/media_types.h"

namespace corvane {

struct Player;

/// One opening of one list: what something late belongs to (a decoded picture, a report of a failure).
struct Opening {
    std::uint32_t list = 0;    ///< Player::lists when it began
    std::uint32_t number = 0;  ///< openings so far, this one included
    bool operator==(const Opening&) const = default;
};

/// Where an opened file is to go on.
struct GoTo {
    Opening opening;
    std::int64_t us = 0;
};

/// A volume that was found, and where.
struct FoundVolume {
    std::uint32_t word = 0;
    std::int16_t auxType = 0;  ///< gAuxType then
    std::string output;        ///< the wave output's name
};

/// What the panel's time tells of the open file.
enum class TimeShown { Elapsed, Left, Total };

namespace mdlPublicFunction {
/// The panel tells how far the reading of what comes into the list has got.
void showReading(Player& player);
}  // namespace mdlPublicFunction

/// One player: the shared state, the loaded forms and the ports. Procedures of the engine take it.
struct Player : mdlDefinePublic::PlayerState {
    explicit Player(Ports& given) : ports(given), forms(given) {}

    Ports& ports;
    FormHost forms;
    MediaTypes types;  ///< the files that are played; what is added here is played like the others
    MediaHost media{*this, types};
    KnownTexts texts{*this};
    ListReading reading{ports, [this] { mdlPublicFunction::showReading(*this); }};  ///< what comes into the list
    bool shuffled = false;                                                          ///< the list, since it came
    bool playsAtStart = false;  ///< files were given to be opened: the list begins although gAutoPlay is off
    std::string openedPath;     ///< of the file opened last
    Opening opening;            ///< of the file opened last
    std::uint32_t lists = 0;    ///< lists that have replaced another so far
    /// Changes with each play, pause, next, previous and close, and with each list that replaces another: the answer of
    /// a box is void when it is another number than when the box was put up.
    std::uint32_t turns = 0;
    bool pictureAwaited = false;               ///< the open file is a picture that is still being decoded
    std::array<std::string, 6> panelCaptions;  ///< the panel's labels, written before it loads
    std::optional<FoundVolume> volumeAtStart;  ///< to be put back at the end; empty: nothing is
    /// Chosen by hand for movies and pictures, whatever their zoom is set to; empty: as the zoom says.
    std::optional<bool> wholeScreen;
    TimeShown timeShown = TimeShown::Elapsed;
    std::string elapsedText;     ///< the time as the open medium told it last
    std::uint32_t shuffles = 0;  ///< so far: entries have other places
    Remembered remembered;
    std::optional<GoTo> goTo;         ///< where the file that was opened is to go on, not done yet
    std::string readingText;          ///< what the panel's text tells of a reading; "": nothing
    std::string textBefore;           ///< what stood there
    std::vector<std::string> toTell;  ///< boxes that wait for the panel
    std::string editorFolder;         ///< what the editor showed last, for its next opening; empty: none yet
};

}  // namespace corvane
