// SPDX-License-Identifier: GPL-3.0-or-later
// A library that is loaded before the program, in the place of a decoder that somebody's file has taken over: it tries
// what a player never does before main(), in a process of its own, and once more in the thread that decodes.
// CORVANE_ATTEMPTS names the file that is told "control NAME ERROR" and "PLACE NAME ERROR", CORVANE_ATTEMPT_INSIDE a
// folder that the player may change, CORVANE_ATTEMPT_OUTSIDE one that it may not, CORVANE_ATTEMPT_PORT a listener.
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "confined/attempts.h"

namespace {

using corvane::test::AttemptPlaces;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

int report = -1;

/// Below the folders that the environment names, one for each who tries. Not a variable: it would be made after
/// begin().
AttemptPlaces placesOf(const std::string& who) {
    return {variable("CORVANE_ATTEMPT_INSIDE") + '/' + who, variable("CORVANE_ATTEMPT_OUTSIDE") + '/' + who,
            std::atoi(variable("CORVANE_ATTEMPT_PORT").c_str())};
}

void tryAll(const char* who, const AttemptPlaces& places) {
    for (const auto& one : corvane::test::attempts()) {
        dprintf(report, "%s %d %s\n", who, one.attempt(places), one.name);
    }
    dprintf(report, "%s 0 all\n", who);
}

__attribute__((constructor)) void begin() {
    const std::string file = variable("CORVANE_ATTEMPTS");
    if (file.empty()) return;
    report = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const AttemptPlaces control = placesOf("control");
    if (!corvane::test::layDown(placesOf("player")) || !corvane::test::layDown(control)) return;
    const pid_t child = fork();
    if (child == 0) {
        tryAll("control", control);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

/// The library that decoders have their buffers from, wherever it was loaded.
void* bufferLibrary() {
    std::string found;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* to) {
            const std::string_view name = info->dlpi_name;
            if (name.find("/libavutil.so") != std::string_view::npos) *static_cast<std::string*>(to) = name;
            return 0;
        },
        &found);
    return dlopen(found.c_str(), RTLD_LAZY | RTLD_NOLOAD);
}

}  // namespace

/// Decoders ask it for the memory of what they decode.
extern "C" __attribute__((visibility("default"))) void* av_buffer_pool_get(void* pool) {
    using Get = void* (*)(void*);
    static const auto real = reinterpret_cast<Get>(dlsym(bufferLibrary(), "av_buffer_pool_get"));
    static std::atomic<bool> tried{false};
    const bool ofItsOwn = syscall(SYS_gettid) != getpid();
    if (report >= 0 && !tried.exchange(true)) tryAll(ofItsOwn ? "decoder" : "main", placesOf("player"));
    return real(pool);
}
