// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/player.h"

namespace corvane {

inline constexpr std::size_t kMostPlaces = 200;                                 ///< files whose place is kept
inline constexpr std::size_t kMostResumeBytes = std::size_t{16} * 1024 * 1024;  ///< of RESUME.INI

/// What RESUME.INI holds.
struct ResumeText {
    struct Entry {
        std::string title;
        std::string path;
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> list;
    int entry = 0;                         ///< the present one, from 0
    std::optional<std::int64_t> openAtUs;  ///< where that was open; empty: it was not
    std::vector<LeftPlace> places;         ///< the file left last first
    bool operator==(const ResumeText&) const = default;
};
/// A text of any other form reads as far as it makes sense: at most kMaxLongFiles entries, an entry of the list, times
/// that a file can have, kMostPlaces places.
ResumeText readResumeText(std::string_view text);
std::string resumeText(const ResumeText& kept);

/// The path of RESUME.INI, beside the settings.
std::string resumeFile(const Player& player);

/// At the start: reads what was kept into the player, and when the list is wanted, fills the player's list with that of
/// the run before, at its present entry. True: it was filled.
bool takeRemembered(Player& player, bool listIsWanted);

/// Opens the list's present entry where the run before left it: held there, or playing on with Auto Start. A file that
/// is not there any more is left alone, and nothing is asked.
void goOnWhereLeft(Player& player);

/// Keeps in mind where files are left, goes to the place when one is opened again, and writes it all down when the
/// panel goes. Watches the player for as long as it lives; asks for no time of its own.
class Resume {
public:
    explicit Resume(Player& player);
    Resume(const Resume&) = delete;
    Resume& operator=(const Resume&) = delete;

private:
    /// The open file as it was seen last.
    struct Seen {
        Opening opening;
        std::string path;
        std::int16_t kind = mdlDefinePublic::mkNone;
        std::int64_t us = 0;
        std::int64_t lengthUs = 0;
    };

    void look();
    void leave(const Seen& file);
    void wantPlaceOf(const Seen& file);
    void goToWanted();
    void takeFormerList(ResumeText& kept) const;
    void takeFormerRest(ResumeText& kept) const;
    void write();

    Player& player_;
    bool panelStood_ = false;
    std::optional<Seen> seen_;  ///< empty: nothing was open
    bool going_ = false;        ///< the event that goes to a place is on its way
    EventLoop::Watch still_;
};

}  // namespace corvane
