// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "media/movies/movie_frames.h"
#include "media/movies/movie_handle.h"
#include "media/movies/movie_source.h"
#include "media/movies/movie_tracks.h"
#include "pictures/picture_pixels.h"
#include "platform/movie_control.h"
#include "platform/one_shot.h"
#include "workers/ui_post.h"
#include "workers/worker.h"

struct mpv_handle;
struct mpv_event;
struct mpv_event_property;

namespace corvane {

/// How a player's frames are seen.
enum class MovieDrawing {
    Painted,         ///< by us
    Shown,           ///< by the graphics driver, where that has a card
    ShownBySoftware  ///< by any driver
};

/// What players of movies have of their desktop, which outlives them.
struct MovieMeans {
    Timers& timers;
    UiPost post;  ///< ways of their own are made of it
    /// The frames of a player. announce: called on any thread when they should be looked at.
    std::function<std::unique_ptr<MovieFrames>(MovieDrawing drawing, mpv_handle* player,
                                               std::function<void()> announce)>
        makeFrames;
};

/// One player of the media library: opens a local movie and holds it, plays, seeks, and has its frames drawn. Used on
/// the user-interface thread; no call waits for the library, and what happens is told from the event loop, never from
/// inside a call. After an open() or close() nothing is told of the file before.
class MoviePlayer {
public:
    struct Listener {
        std::function<void()> opened;  ///< the file can be played; duration() and picture() are known
        std::function<void(const std::string& reason)> failed;
        std::function<void()> ended;  ///< played to its end; stands there, paused
        std::function<void()> frameReady;
        std::function<void(const std::string& text)> says;       ///< which track was chosen
        std::function<void(const std::string& text)> subtitles;  ///< to be seen from now on, as MovieTracks tells them
        std::function<void()> lost;      ///< what shows its frames; stuck(). The movie can go on with another player
        std::function<void()> unusable;  ///< stuck() before the movie was begun: another player can open it
    };

    /// Null when the library cannot make one; `reason` says why, in words.
    static std::unique_ptr<MoviePlayer> make(const MovieMeans& means, MovieDrawing drawing, std::string& reason);
    /// Of what makeMovieHandle() has made.
    static std::unique_ptr<MoviePlayer> make(MovieHandle handle, const MovieMeans& means, MovieDrawing drawing,
                                             std::string& reason);
    MoviePlayer(const MoviePlayer&) = delete;
    MoviePlayer& operator=(const MoviePlayer&) = delete;
    ~MoviePlayer();

    void listen(Listener listener);

    void open(const std::string& path);
    void close();
    void play();  ///< at the end: ends again
    void pause();
    /// Exact; only when opened. A seek that is asked for while one is under way waits; a newer one takes its place.
    void seek(double seconds);
    void setRate(double rate);  ///< of what plays as well, at once
    /// Asks whether the end was reached, in case the library's own word came too early to be believed.
    void checkEnd();

    double position() const;  ///< seconds; a seek's target at once
    double duration() const { return duration_; }
    PictureSize picture() const { return picture_; }  ///< empty without one
    bool hasFile() const { return !path_.empty(); }   ///< open, or being opened
    bool isOpen() const { return !path_.empty() && !opening_; }
    /// Asks whether what shows its frames is still there.
    void checkFrames();
    /// The picture that is seen where frames are shown, later; without pixels: there is none. It lies as it was taken,
    /// turned: degrees by which it is to be, and is `full` then. Nothing comes of a movie that is closed.
    using TakePicture = std::function<void(PicturePixels picture, int turned)>;
    void whole(TakePicture take);
    MovieFrames& frames() { return *library_->frames; }
    const std::vector<MovieChapter>& chapters() const { return chapters_; }
    void chooseNext(MovieTrack::Kind kind) { tracks_->chooseNext(kind); }

    /// It did not come to an end with a file for longer than kOpenPatience, is held by a sound server that has fallen
    /// silent, or has lost what shows its frames: it is not to be used again.
    bool stuck() const { return stuck_; }
    static constexpr std::chrono::seconds kOpenPatience{20};

    /// The movie plays in silence because no sound server answered, or the one there was has gone.
    bool soundLost() const { return !silent_ && soundOutput_ == "null"; }
    void findSoundAgain();
    /// So long a movie waits for a sound server that says nothing, and then plays in silence.
    static constexpr std::chrono::seconds kSoundPatience{1};

private:
    /// Seeks are told from what follows them: the library answers the command first, then plays again.
    enum class Seek { None, Sent, Answered };

    /// What the library's own threads use.
    struct Library {
        Library() = default;
        Library(const Library&) = delete;
        Library& operator=(const Library&) = delete;
        ~Library();
        MovieSource source;
        MovieHandle handle;
        std::unique_ptr<MovieFrames> frames;
    };

    explicit MoviePlayer(const MovieMeans& means);
    bool start(const MovieMeans& means, MovieDrawing drawing, std::string& reason);
    void askForSound();
    void load(bool heard);
    void sendLoad();
    void setSound(bool heard);
    MovieSource& source() { return library_->source; }
    void wake();
    void pump();
    void handle(const mpv_event& event);
    /// The library is at the file that was opened last.
    bool current() const { return entry_ >= 0 && started_ == entry_; }
    void handleEnd(std::int64_t entry, bool failed, int error);
    void handleReply(const mpv_event& event);
    void handleWhole(const mpv_event& event);
    void handleProperty(const mpv_event_property& property);
    void handleRestart();
    void handleFact(const mpv_event& event);
    void handleTracks(const mpv_event& event);
    void goOnToFirstFrame();
    void learnFacts();
    void completeOpening();
    void setInterlaced(bool interlaced);
    void countLength();
    void tellOpened();
    void tellFailed(const std::string& reason);
    void tellEnded();
    void sendSeek();
    void setFlag(const char* name, bool on);
    void setNumber(const char* name, double value);
    void command(std::uint64_t tag, std::initializer_list<const char*> words);

    OneShot patience_;  ///< with an opening
    UiPost post_;       ///< what comes from the library's threads and ours, and is told later
    std::atomic<bool> woken_{false};
    std::shared_ptr<Library> library_ = std::make_shared<Library>();
    Listener listener_;
    std::optional<MovieTracks> tracks_;
    Worker counter_;
    Worker asker_;  ///< for the sound server

    std::uint32_t number_ = 0;  ///< of the open; replies to an earlier one are dropped
    std::uint32_t turn_ = 0;    ///< of the last change of place or state; an end belongs to one
    std::string path_;
    std::int64_t entry_ = -1;    ///< the library's own number of the file; -1 not known yet
    std::int64_t started_ = -1;  ///< the one that it has come to
    bool opening_ = false;
    bool loadWaits_ = false;  ///< for what draws
    bool playing_ = false;
    bool ended_ = false;
    Seek seek_ = Seek::None;
    std::optional<double> waiting_;  ///< the seek to be sent next
    std::optional<double> target_;   ///< where the last seek went, until the library plays on from there
    double time_ = 0;
    double duration_ = 0;
    double rate_ = 1;
    PictureSize picture_;
    bool sounds_ = false;
    std::uint64_t hook_ = 0;  ///< by which the library waits before it decodes; 0 it does not
    int turned_ = 0;          ///< degrees by which the picture is turned
    bool interlaced_ = false;
    std::vector<MovieChapter> chapters_;
    TakePicture whole_;  ///< waits for the picture
    bool stuck_ = false;
    bool counted_ = false;  ///< the duration is exact
    std::string format_;
    bool silent_ = false;      ///< asked to make no sound
    bool heard_ = true;        ///< the library is told to look for a sound server
    std::string soundOutput_;  ///< the library's name of what it plays through; "" none
};

}  // namespace corvane
