// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/movie_library.h"

#include <mutex>

#include "media/shared_library.h"

namespace corvane {

namespace {

// The interface of version 2, which this is built with.
static_assert(MPV_CLIENT_API_VERSION >> 16 == 2);
constexpr const char* kLibrary = "libmpv.so.2";

struct Loaded {
    MovieLibrary functions;
    bool complete = false;

    void load() {
        complete = true;
        const SharedLibrary library(kLibrary);
#define CORVANE_FIND(name) complete = library.find(#name, functions.name) && complete;
        CORVANE_MPV(CORVANE_FIND)
#undef CORVANE_FIND
    }
};

Loaded& loaded() {
    static Loaded once;  // functions, not state: they may stay for as long as the process does
    return once;
}

}  // namespace

bool loadMovieLibrary() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    // What was refused, as when no descriptor was left, may be there now.
    if (!loaded().complete) loaded().load();
    return loaded().complete;
}

const MovieLibrary& movieLibrary() { return loaded().functions; }

}  // namespace corvane
