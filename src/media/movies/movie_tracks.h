// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "media/movies/movie_source.h"
#include "media/movies/movie_track.h"
#include "media/movies/subtitle_files.h"
#include "workers/ui_post.h"
#include "workers/worker.h"

struct mpv_handle;
struct mpv_event;

namespace corvane {

/// Which of a movie's tracks of subtitles and sound are shown and heard: goes through them and says which. Files beside
/// the movie are looked for when subtitles are first asked for. Used on the user-interface thread; nothing waits for
/// the library. Destroyed before the player.
class MovieTracks {
public:
    using Say = std::function<void(const std::string& text)>;

    /// chosen: other subtitles are to be seen.
    MovieTracks(mpv_handle* player, MovieSource& source, const UiPost& post, std::function<void()> chosen);

    /// says: which track was chosen. subtitles: what is to be seen now, as its file has it; "" nothing.
    void listen(Say says, Say subtitles) {
        say_ = std::move(says);
        subtitles_ = std::move(subtitles);
    }
    void begin(const std::string& path);  ///< that movie is open
    void end();                           ///< nothing is said of it any more; the next one begins without a choice
    /// Subtitles or Sound: the next one.
    void chooseNext(MovieTrack::Kind kind);
    bool showsSubtitles() const { return subtitled_; }
    void leaveSubtitles(const std::string& why);
    /// An answer of the library. False: it is not for this.
    bool handle(const mpv_event& event);

    /// Answers to the library's user carry their question in the high half of their tag; these are ours and above.
    static constexpr std::uint64_t kFirstTag = 100;

private:
    void lookBeside();
    void add(const std::vector<SubtitleFile>& files);
    void goOn();
    void ask();
    void choose(const std::vector<MovieTrack>& all);
    void show(const char* text) const;
    void set(const char* property, const std::string& value);
    void say(const std::string& text) const;
    std::uint64_t tagged(std::uint64_t tag) const { return tag << 32U | number_; }

    mpv_handle* player_;
    MovieSource& source_;
    UiPost post_;
    std::function<void()> chosen_;
    Say say_, subtitles_;
    Worker looker_;
    std::uint32_t number_ = 0;              ///< of the movie; answers about an earlier one are dropped
    std::string path_;                      ///< "": none is open
    std::vector<MovieTrack::Kind> wanted_;  ///< choices that are still to be made, the present one first
    bool looked_ = false;                   ///< beside the movie
    int adding_ = 0;                        ///< files that the library is taking up
    std::string refused_;                   ///< a file beside the movie that is not shown, and why
    bool subtitled_ = false;
    bool soundChosen_ = false;
};

}  // namespace corvane
