// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/player.h"
#include "forms/event.h"
#include "platform/idle_inhibitor.h"

namespace corvane {

/// What a remote control is shown of the player.
struct MediaState {
    enum class Status { Stopped, Playing, Paused };

    bool ready = false;  ///< the panel stands: between the opening and the power button
    Status status = Status::Stopped;
    bool repeat = false;
    int volume = 0;  ///< 0 to kFullVolume
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canPlay = false;
    bool canPause = false;
    bool canSeek = false;

    // The open file, else the entry that play would open.
    std::uint32_t track = 0;  ///< another number for another track; 0: there is none
    std::string title;
    std::string path;
    std::string artist, album;  ///< "": not known
    int albumNumber = 0;        ///< its number on the album; 0: not known
    std::string cover;          ///< path of a picture; "": none
    int number = 0;             ///< its place in the list from 1; 0: the list was replaced and does not hold it
    std::int64_t lengthUs = 0;  ///< microseconds; 0: not open, or not known

    bool operator==(const MediaState&) const = default;
};

/// The player as media keys and remote controls see it. Asks for no time of its own: it looks whenever the player
/// stands still after a handler. All calls are made on the user-interface thread, commands from posted events, so that
/// they wait while a box is up.
class MediaSession {
public:
    enum class Answer {
        Done,          ///< also when there was nothing to do
        Busy,          ///< the editor or the settings are open, or there is no panel: nothing was done
        NotSupported,  ///< the player cannot do this at all, or not with this track
        Invalid        ///< the value makes no sense
    };
    enum class Loop { None, Track, Playlist };

    explicit MediaSession(Player& player);
    ~MediaSession();
    MediaSession(const MediaSession&) = delete;
    MediaSession& operator=(const MediaSession&) = delete;

    /// Idling is inhibited while a movie plays, and while pictures are shown one after the other: what is only heard
    /// needs no eyes. `idle` outlives this, or is taken back by null.
    void keepAwakeBy(IdleInhibitor* idle) { idle_ = idle; }

    const MediaState& state() const { return state_; }
    /// Of the files that open() takes, by their names in the shared database of types.
    std::vector<std::string> mimeTypes() const;
    std::int64_t positionUs() const;  ///< microseconds from the track's beginning; 0 while stopped

    Event<> Changed;             ///< state() has changed
    Event<std::int64_t> Seeked;  ///< the position (microseconds) is not where one who counts on from the last would be

    Event<> BoxUp;  ///< a command that runs goes on when somebody has answered a box

    Answer raise();  ///< brings the panel to the front
    Answer quit();
    Answer next();      ///< always another file; at the list's end it stops. Nothing without canGoNext
    Answer previous();  ///< always another file. Nothing without canGoPrevious
    Answer play();
    Answer pause();
    Answer playPause();  ///< NotSupported without canPause
    Answer stop();
    Answer seekBy(std::int64_t offsetUs);  ///< held at 0; beyond the end it is next()
    /// Nothing when the track is another one meanwhile, or the position is not inside it.
    Answer seekTo(std::uint32_t track, std::int64_t positionUs);
    /// Plays one file, which replaces the list. NotSupported: not one of the player's types. Invalid: it is not there.
    Answer open(const std::string& path);
    Answer setLoop(Loop loop);       ///< NotSupported: one track alone is not repeated
    Answer setShuffle(bool on);      ///< true shuffles once and reads false again
    Answer setVolume(double level);  ///< 0 to 1, held there
    Answer setRate(double rate);     ///< 1 is the only one; 0 pauses

private:
    void look();
    MediaState::Status status() const;
    void nameTrack(MediaState& seen);
    void lookAtPosition(const MediaState& before);
    void tellPosition(std::int64_t nowUs);
    bool isBusy() const;
    bool isWatched() const;

    Player& player_;
    IdleInhibitor* idle_ = nullptr;  ///< null: none
    bool watched_ = false;           ///< as it was told
    MediaState state_;
    std::int16_t trackIndex_ = 0;     ///< gFileIndex when the track got its number
    std::uint32_t trackOpening_ = 0;  ///< Player::opening then
    std::uint32_t tracks_ = 0;        ///< numbers given so far
    std::int64_t toldUs_ = 0;         ///< position as those who listen know it, at toldAtMs_
    std::int64_t toldAtMs_ = 0;
    EventLoop::Watch still_;
};

}  // namespace corvane
