// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/control_sets.h"
#include "types/media_types.h"

namespace corvane {

struct Player;

/// What a key asks of a movie beside playing it.
enum class MovieKey { Subtitles, Sound, ChapterBack, ChapterForth, Frame };

/// One file as its kind of media plays it: a sound, a disc track, a movie, a picture. Each kind is one class in
/// src/players/. The playback procedures decide when something is done, the medium how. It lives from its opening until
/// the file is closed or another one is opened, which may happen inside its own calls: whoever calls it holds it
/// (MediaHost::current). All calls are made on the user-interface thread. A call whose window is gone does nothing, and
/// tells 0.
class OpenMedium {
public:
    OpenMedium(Player& player, MediaType type);
    OpenMedium(const OpenMedium&) = delete;
    OpenMedium& operator=(const OpenMedium&) = delete;
    virtual ~OpenMedium() = default;

    const MediaType& type() const { return type_; }
    virtual FormId window() const = 0;  ///< the form it plays in
    /// Tool tip of the panel's time.
    virtual std::string timeTip() const { return "Time"; }
    /// What it shows may stay up while the next file is opened.
    virtual bool staysUp() const { return false; }
    /// It is looked at while it plays: the screen must not go dark.
    virtual bool isWatched() const { return false; }

    // --- Opening and closing -----------------------------------------------------------------------------------------

    /// False: the name of the file says already that it cannot be played. Asked before it is opened.
    virtual bool canOpen(const std::string& path) const;
    /// Makes ready what the file will need, which is likely to be opened next, after the one that is open now.
    virtual void makeReady(const std::string& path) const = 0;
    /// Opens the list's present entry and lets it play; Player::media holds this medium already. What fails is told by
    /// mediaFailed, now or later.
    virtual void open() = 0;
    /// What it still waits for is not wanted any more.
    virtual void giveUp() {}
    /// Lets go the file and its window; with keepImage a picture stays up.
    virtual void close(bool keepImage) = 0;

    // --- Transport ---------------------------------------------------------------------------------------------------

    virtual void resume() = 0;  ///< goes on after a pause
    virtual void pause() = 0;
    virtual void step() = 0;  ///< next, while paused
    virtual void back() = 0;  ///< previous, while paused
    /// Its window's control or clock says that time has gone on: shows that, and ends the file or goes back to its
    /// start where quick play, the custom positions or the slide clock say so.
    virtual void progress() = 0;

    // --- Time --------------------------------------------------------------------------------------------------------

    virtual std::int64_t lengthUs() const = 0;    ///< microseconds; 0: not known (yet)
    virtual std::int64_t positionUs() const = 0;  ///< microseconds, as the device tells it
    /// The position moves by itself now: not before a movie's delay is over, nor behind its end.
    virtual bool isProgressing() const = 0;
    /// How far its position may lie from where one who counts on expects it, microseconds: a sound is heard a moment
    /// after its start was told.
    virtual std::int64_t toleranceUs() const { return 400'000; }
    /// Goes to a position inside the length and shows it; what plays goes on from there, what is paused holds there.
    virtual void seekTo(std::int64_t us) = 0;
    /// Goes to the share of the length that the slider's place (twips, inside of gSlideWidth) stands for.
    virtual void seekToSlide(std::int32_t x) = 0;
    /// The drive turns up to speed: it has been told to play and does not yet.
    virtual bool isWaitedFor() const { return false; }
    /// It has ended, and the delay before the next file runs: it is not brought back.
    virtual bool isHandingOver() const { return false; }

    // --- The whole screen --------------------------------------------------------------------------------------------

    virtual bool fillsScreen() const { return false; }  ///< where it is seen, it is seen on the whole screen
    /// Player::wholeScreen is another one: it is seen as that says.
    virtual void takeWholeScreen() {}

    // --- What movies carry -------------------------------------------------------------------------------------------

    virtual void obey(MovieKey /*key*/) {}  ///< nothing for what is no movie

    // --- Custom positions --------------------------------------------------------------------------------------------

    virtual bool takesCustomPositions() const { return true; }
    /// Where it stands, in the unit of gStartPosition and gStopPosition; empty: it has no such place.
    virtual std::optional<std::int32_t> position() const = 0;
    /// Custom positions compare as the panel shows them.
    virtual bool isBefore(std::int32_t a, std::int32_t b) const { return a < b; }

    // --- A press of previous or next that is held --------------------------------------------------------------------

    /// The press begins, or is over. True from the latter: the whole screen has been taken back, and with it the keys.
    virtual void leaveWholeScreen() {}
    virtual bool takeWholeScreenBack() { return false; }
    /// The time of the hold is over once more: goes a second back or forth, or faster, and sets the timer for the next
    /// time. False: it cannot be sought by holding, so that the release is a click.
    virtual bool hold(bool back, bool shift) = 0;
    /// What was held goes on as before; steppedFast: it was sought in fast steps.
    virtual void endHold(bool /*steppedFast*/) {}

protected:
    MainPanelControls* panel() const;  ///< null: it is not loaded
    void showTime(const std::string& text) const;
    /// The slider's bar for a position in a length.
    void showSlide(double position, double length) const;
    void placeSlide(std::int32_t x) const;  ///< the slider's bar, twips
    void stepFast() const;                  ///< a press that is held goes on in fast steps
    const std::string& path() const;        ///< of the list's present entry
    std::int32_t listedStart() const;       ///< its custom positions; 0 none
    std::int32_t listedStop() const;
    std::int32_t startInForce() const;  ///< the custom start that counts now; 0 none

    Player& player_;

private:
    MediaType type_;
};

}  // namespace corvane
