// SPDX-License-Identifier: GPL-3.0-or-later
// A graphics driver that goes wrong: loaded before the program, it stands before the system's.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace {

/// What CORVANE_DRIVER says: "refuses" or "hangs at once", or "lost" or "hangs" from when the file is there that
/// CORVANE_DRIVER_SIGN names.
bool does(const char* what) {
    const char* const said = std::getenv("CORVANE_DRIVER");
    return said != nullptr && std::strcmp(said, what) == 0;
}

bool isDue() {
    const char* const said = std::getenv("CORVANE_DRIVER_SIGN");
    return said != nullptr && access(said, F_OK) == 0;
}

[[noreturn]] void hang() {
    while (true) pause();
}

template <class Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

unsigned eglInitialize(void* display, int* major, int* minor);
unsigned eglInitialize(void* display, int* major, int* minor) {
    if (does("refuses")) return 0;
    if (does("hangs at once")) hang();
    static const auto system = next<decltype(&eglInitialize)>("eglInitialize");
    return system == nullptr ? 0 : system(display, major, minor);
}

unsigned eglSwapBuffers(void* display, void* surface);
unsigned eglSwapBuffers(void* display, void* surface) {
    if (does("lost") && isDue()) return 0;
    if (does("hangs") && isDue()) hang();
    static const auto system = next<decltype(&eglSwapBuffers)>("eglSwapBuffers");
    return system == nullptr ? 0 : system(display, surface);
}
}
