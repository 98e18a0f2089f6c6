// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/av_library.h"

#include <atomic>
#include <mutex>
#include <string>

#include "media/shared_library.h"

namespace corvane {

namespace {

/// Bytes of one allocation of the libraries: what a file says of its sizes is not to be believed. A picture of as many
/// pixels as a movie may have takes 72 MiB at most; a player holds several packets of such a size.
constexpr std::size_t kMostAtOnce = std::size_t{74} << 20U;

std::string versioned(const char* name, int major) { return std::string(name) + ".so." + std::to_string(major); }

struct Loaded {
    AvLibrary functions;
    bool complete = false;

    void load() {
        complete = true;
        const SharedLibrary format(versioned("libavformat", LIBAVFORMAT_VERSION_MAJOR));
        const SharedLibrary codec(versioned("libavcodec", LIBAVCODEC_VERSION_MAJOR));
        const SharedLibrary util(versioned("libavutil", LIBAVUTIL_VERSION_MAJOR));
        const SharedLibrary resample(versioned("libswresample", LIBSWRESAMPLE_VERSION_MAJOR));
#define CORVANE_FIND(library, name) complete = library.find(#name, functions.name) && complete;
#define CORVANE_FIND_FORMAT(name) CORVANE_FIND(format, name)
#define CORVANE_FIND_CODEC(name) CORVANE_FIND(codec, name)
#define CORVANE_FIND_UTIL(name) CORVANE_FIND(util, name)
#define CORVANE_FIND_RESAMPLE(name) CORVANE_FIND(resample, name)
        CORVANE_AVFORMAT(CORVANE_FIND_FORMAT)
        CORVANE_AVCODEC(CORVANE_FIND_CODEC)
        CORVANE_AVUTIL(CORVANE_FIND_UTIL)
        CORVANE_SWRESAMPLE(CORVANE_FIND_RESAMPLE)
        if (!complete) return;
        functions.av_log_set_level(AV_LOG_QUIET);
        functions.av_max_alloc(kMostAtOnce);
    }
};

std::atomic<bool> isLoaded{false};

Loaded& loaded() {
    static Loaded once;  // functions, not state: they may stay for as long as the process does
    return once;
}

}  // namespace

bool loadAv() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    // What was refused, as when no descriptor was left, may be there now.
    if (!loaded().complete) loaded().load();
    isLoaded = loaded().complete;
    return isLoaded;
}

bool avIsLoaded() { return isLoaded; }

const AvLibrary& av() { return loaded().functions; }

}  // namespace corvane
