// SPDX-License-Identifier: GPL-3.0-or-later
// A drive that does not answer, for tests: loaded before the system's library, it holds every call that asks for a file
// below the folder CORVANE_STALL_FOLDER for as long as the file that CORVANE_STALL_SWITCH names holds a word for it:
// "read" (what is in an open file), "open" (that and opening), "all" (that, and looking at names), "write" (flushing).
// A signal does not end the waiting.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

enum class Call { Read, Open, Look, Write };

constexpr int kLookMs = 10;  ///< between two looks at the switch

template <class Function>
Function real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool isBelow(const char* path) {
    const char* const folder = std::getenv("CORVANE_STALL_FOLDER");
    const std::size_t length = folder != nullptr ? std::strlen(folder) : 0;
    return length > 0 && path != nullptr && std::strncmp(path, folder, length) == 0 && path[length] == '/';
}

bool isBelow(int file) {
    if (std::getenv("CORVANE_STALL_FOLDER") == nullptr) return false;
    char link[40], path[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length <= 0) return false;
    path[length] = '\0';
    return isBelow(path);
}

bool isOn(Call call) {
    static const auto openReal = real<int (*)(const char*, int, ...)>("open");
    static const auto readReal = real<ssize_t (*)(int, void*, std::size_t)>("read");
    const char* const name = std::getenv("CORVANE_STALL_SWITCH");
    const int file = name != nullptr ? openReal(name, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) return false;
    char word[8] = {};
    const ssize_t length = readReal(file, word, sizeof word - 1);
    close(file);
    if (length <= 0) return false;
    if (call == Call::Write) return word[0] == 'w';
    const int reach = word[0] == 'a' ? 3 : word[0] == 'o' ? 2 : word[0] == 'r' ? 1 : 0;
    return reach > (call == Call::Look ? 2 : call == Call::Open ? 1 : 0);
}

template <class Place>
void stall(Place place, Call call) {
    if (!isBelow(place)) return;
    while (isOn(call)) poll(nullptr, 0, kLookMs);
}

}  // namespace

// NOLINTBEGIN: the system's own declarations
extern "C" {

#define CORVANE_STALLED(call, place, result, name, parameters, arguments) \
    __attribute__((visibility("default"))) result name parameters {       \
        static const auto next = real<result(*) parameters>(#name);       \
        stall(place, call);                                               \
        return next arguments;                                            \
    }

#define CORVANE_OPENED(name)                                                            \
    __attribute__((visibility("default"))) int name(const char* path, int flags, ...) { \
        static const auto next = real<int (*)(const char*, int, ...)>(#name);           \
        va_list more;                                                                   \
        va_start(more, flags);                                                          \
        const mode_t mode = va_arg(more, mode_t);                                       \
        va_end(more);                                                                   \
        stall(path, Call::Open);                                                        \
        return next(path, flags, mode);                                                 \
    }
CORVANE_OPENED(open)
CORVANE_OPENED(open64)

#define CORVANE_OPENED_AT(name)                                                                     \
    __attribute__((visibility("default"))) int name(int folder, const char* path, int flags, ...) { \
        static const auto next = real<int (*)(int, const char*, int, ...)>(#name);                  \
        va_list more;                                                                               \
        va_start(more, flags);                                                                      \
        const mode_t mode = va_arg(more, mode_t);                                                   \
        va_end(more);                                                                               \
        stall(path, Call::Open);                                                                    \
        return next(folder, path, flags, mode);                                                     \
    }
CORVANE_OPENED_AT(openat)
CORVANE_OPENED_AT(openat64)

CORVANE_STALLED(Call::Open, path, FILE*, fopen, (const char* path, const char* mode), (path, mode))
CORVANE_STALLED(Call::Open, path, FILE*, fopen64, (const char* path, const char* mode), (path, mode))
CORVANE_STALLED(Call::Look, path, int, stat, (const char* path, struct stat* to), (path, to))
CORVANE_STALLED(Call::Look, path, int, stat64, (const char* path, struct stat64* to), (path, to))
CORVANE_STALLED(Call::Look, path, int, lstat, (const char* path, struct stat* to), (path, to))
CORVANE_STALLED(Call::Look, path, int, lstat64, (const char* path, struct stat64* to), (path, to))
CORVANE_STALLED(Call::Look, path, int, fstatat, (int folder, const char* path, struct stat* to, int flags),
                (folder, path, to, flags))
CORVANE_STALLED(Call::Look, path, int, fstatat64, (int folder, const char* path, struct stat64* to, int flags),
                (folder, path, to, flags))
CORVANE_STALLED(Call::Look, path, int, statx,
                (int folder, const char* path, int flags, unsigned mask, struct statx* to),
                (folder, path, flags, mask, to))
CORVANE_STALLED(Call::Look, path, int, access, (const char* path, int mode), (path, mode))
CORVANE_STALLED(Call::Look, path, DIR*, opendir, (const char* path), (path))
CORVANE_STALLED(Call::Look, path, ssize_t, readlink, (const char* path, char* to, std::size_t size), (path, to, size))
CORVANE_STALLED(Call::Read, file, ssize_t, read, (int file, void* to, std::size_t count), (file, to, count))
CORVANE_STALLED(Call::Read, file, ssize_t, pread, (int file, void* to, std::size_t count, off_t from),
                (file, to, count, from))
CORVANE_STALLED(Call::Read, file, ssize_t, pread64, (int file, void* to, std::size_t count, off64_t from),
                (file, to, count, from))
CORVANE_STALLED(Call::Write, file, int, fsync, (int file), (file))

/// Nothing of a drive that does not answer is in memory.
__attribute__((visibility("default"))) ssize_t preadv2(int file, const iovec* parts, int count, off_t from, int flags) {
    static const auto next = real<ssize_t (*)(int, const iovec*, int, off_t, int)>("preadv2");
    if ((flags & RWF_NOWAIT) != 0 && isBelow(file) && isOn(Call::Read)) {
        errno = EAGAIN;
        return -1;
    }
    return next(file, parts, count, from, flags);
}

}  // extern "C"
// NOLINTEND
