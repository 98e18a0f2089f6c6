// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_handle.h"

#include <array>
#include <clocale>
#include <string_view>
#include <utility>

#include "drives/spare_descriptors.h"
#include "media/movies/movie_library.h"
#include "media/sound/av_library.h"
#include "media/sound/silence.h"
#include "workers/worker.h"

namespace corvane {

namespace {

enum class Without {
    Refuse,  ///< a file could do more than be played, or take all memory
    Play     ///< another version may lack it: then it needs not be told
};

struct Option {
    const char* name;
    const char* value;
    Without without;
};

/// A movie is a local file and nothing else: no configuration, no scripts, no network, no file that it refers to.
constexpr std::array<Option, 40> kOptions{{
    {"config", "no", Without::Refuse},
    {"load-scripts", "no", Without::Refuse},
    {"ytdl", "no", Without::Refuse},
    {"access-references", "no", Without::Refuse},
    {"demuxer-lavf-o", "protocol_whitelist=[file]", Without::Refuse},
    {"stream-lavf-o", "protocol_whitelist=[file]", Without::Refuse},
    {"autoload-files", "no", Without::Refuse},
    {"embeddedfonts", "no", Without::Refuse},  // fonts that lie in a movie are not given to the reader of fonts
    {"ordered-chapters", "no", Without::Refuse},
    {"resume-playback", "no", Without::Refuse},
    {"save-position-on-quit", "no", Without::Refuse},
    {"vo", "libmpv", Without::Refuse},
    {"hwdec", "no", Without::Refuse},
    {"video-rotate", "no", Without::Refuse},  // drawing by software, it ends the program at a picture that is turned
    {"demuxer-max-bytes", "32MiB", Without::Refuse},
    {"demuxer-max-back-bytes", "8MiB", Without::Refuse},
    {"vd-lavc-o", "max_pixels=9437184", Without::Refuse},
    {"idle", "yes", Without::Refuse},
    {"pause", "yes", Without::Refuse},
    {"keep-open", "yes", Without::Refuse},
    {"ao", kMovieSoundOutput, Without::Refuse},
    {"audio-display", "no", Without::Play},
    {"terminal", "no", Without::Play},
    {"osc", "no", Without::Play},
    {"osd-level", "0", Without::Play},
    {"input-default-bindings", "no", Without::Play},
    {"input-vo-keyboard", "no", Without::Play},
    {"input-cursor", "no", Without::Play},
    {"input-media-keys", "no", Without::Play},
    {"sid", "no", Without::Play},
    {"sub-visibility", "no", Without::Refuse},  // a file can make one line take gigabytes to be drawn: we draw them
    {"keepaspect", "no", Without::Play},      // its frames have their shape already; rounded, it would add a black line
    {"sws-allow-zimg", "no", Without::Play},  // its colours are wrong in memory
    {"sws-fast", "yes", Without::Play},       // half the work of a frame; what it rounds off is not seen
    {"pulse-buffer", "native", Without::Play},  // with a short one the clock stands still at first without hardware
    {"audio-client-name", "Corvane", Without::Play},
    {"audio-pitch-correction", "yes", Without::Play},
    {"hr-seek", "yes", Without::Play},
    {"cache", "auto", Without::Play},
    {"stop-screensaver", "no", Without::Play},
}};

static_assert(kMostMoviePixels == 9437184);

constexpr const char* kNotStarted = "The movie player cannot be started";

struct Made {
    MovieHandle handle;
    std::string reason;
};

void make(Made& made) {
    made.reason = kNotStarted;
    MovieHandle handle(movieLibrary().mpv_create());
    if (!handle) return;
    const std::string refused = refusedMovieOption([&handle](const char* name, const char* value) {
        return movieLibrary().mpv_set_option_string(handle.get(), name, value);
    });
    if (!refused.empty()) {
        made.reason = "This version of the movie player cannot be told \"" + refused + "\"";
        return;
    }
    if (silenceWanted() && movieLibrary().mpv_set_option_string(handle.get(), "ao", kNoMovieSound) < 0) return;
    if (movieLibrary().mpv_initialize(handle.get()) < 0) return;
    made.handle = std::move(handle);
    made.reason.clear();
}

}  // namespace

void DestroyMovieHandle::operator()(mpv_handle* handle) const { movieLibrary().mpv_terminate_destroy(handle); }

std::string refusedMovieOption(const std::function<int(const char* name, const char* value)>& set) {
    for (const Option& option : kOptions) {
        if (set(option.name, option.value) < 0 && option.without == Without::Refuse) return option.name;
    }
    return "";
}

MovieHandle makeMovieHandle(std::string& reason) {
    if (!loadMovieLibrary()) return reason = SpareDescriptors::reason("The movie player is not installed"), nullptr;
    loadAv();  // the same libraries, with our bounds
    // The library refuses to work with another one. Set once: another thread may be using it.
    if (std::string_view(std::setlocale(LC_NUMERIC, nullptr)) != "C") std::setlocale(LC_NUMERIC, "C");
    // Two owners: what is made after the patience is over goes with the worker.
    const auto made = std::make_shared<Made>();
    Worker worker;
    const bool begun = worker.start([made](const Worker::GiveUp&) { make(*made); });
    if (!begun) return reason = Worker::kRefused, nullptr;
    if (!worker.wait(kMovieHandlePatience)) return reason = kNotStarted, nullptr;
    if (!made->handle) reason = made->reason.empty() ? Worker::kBroken : made->reason;
    return std::move(made->handle);
}

}  // namespace corvane
