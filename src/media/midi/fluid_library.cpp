// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/fluid_library.h"

#include <mutex>

#include "media/shared_library.h"

namespace corvane {

namespace {

// The interface of version 2, which this is built with.
static_assert(FLUIDSYNTH_VERSION_MAJOR == 2);
constexpr const char* kLibrary = "libfluidsynth.so.3";

struct Loaded {
    FluidLibrary functions;
    bool complete = false;

    void load() {
        complete = true;
        const SharedLibrary library(kLibrary);
#define CORVANE_FIND(name) complete = library.find(#name, functions.name) && complete;
        CORVANE_FLUIDSYNTH(CORVANE_FIND)
    }
};

Loaded& loaded() {
    static Loaded once;  // functions, not state: they may stay for as long as the process does
    return once;
}

}  // namespace

bool loadFluid() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    // What was refused, as when no descriptor was left, may be there now.
    if (!loaded().complete) loaded().load();
    return loaded().complete;
}

const FluidLibrary& fluid() { return loaded().functions; }

}  // namespace corvane
