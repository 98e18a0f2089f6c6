// SPDX-License-Identifier: GPL-3.0-or-later
// A drive that does not answer, for tests: loaded before the system's library, it holds every call that asks for a file
// below the folder CORVANE_STALL_FOLDER for as long as the file that CORVANE_STALL_SWITCH names holds a word for it:
// "read" (what is in an open file), "open" (that and opening), "all" (that, and looking at names), "write" (flushing).
// A signal does not end the waiting. "slow" holds each call for a moment, as a far machine does: kSlowMs, a read
// kSlowReadMs. A drive that was pulled out does not hold: "gone" (reads fail with an input error, names are not there)
// and "dead" (the same, names belong to no device any more).
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace {

enum class Call { Read, Open, Look, Write };

constexpr int kLookMs = 10;       ///< between two looks at the switch
constexpr int kSlowMs = 50;       ///< there and back again over a net
constexpr int kSlowReadMs = 5;    ///< much of what is read was sent ahead
constexpr int kErrorSeen = 0x20;  ///< what ferror() looks for in a stream of the system's library

template <class Function>
Function real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool beginsInFolder(const char* path) {
    const char* const folder = std::getenv("CORVANE_STALL_FOLDER");
    const std::size_t length = folder != nullptr ? std::strlen(folder) : 0;
    return length > 0 && path != nullptr && std::strncmp(path, folder, length) == 0 && path[length] == '/';
}

/// Also where links lead there, as far as they are there.
bool isBelow(const char* path) {
    if (beginsInFolder(path)) return true;
    char real[PATH_MAX];
    return std::getenv("CORVANE_STALL_FOLDER") != nullptr && path != nullptr && realpath(path, real) != nullptr &&
           beginsInFolder(real);
}

/// A link itself lies where it lies.
struct Name {
    const char* path;
};
bool isBelow(Name name) { return beginsInFolder(name.path); }

struct InFolder {
    int folder;
    const char* path;
    int flags;
};

bool isBelow(int file) {
    if (std::getenv("CORVANE_STALL_FOLDER") == nullptr) return false;
    char link[40], path[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length <= 0) return false;
    path[length] = '\0';
    return isBelow(path);
}

bool isBelow(InFolder name) {
    if (name.path == nullptr || name.path[0] == '/' || name.folder == AT_FDCWD) {
        return (name.flags & AT_SYMLINK_NOFOLLOW) != 0 ? beginsInFolder(name.path) : isBelow(name.path);
    }
    char link[40], path[2 * PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", name.folder);
    const ssize_t length = readlink(link, path, PATH_MAX);
    if (std::getenv("CORVANE_STALL_FOLDER") == nullptr || length <= 0) return false;
    std::snprintf(path + length, PATH_MAX, "/%s", name.path);
    return isBelow(InFolder{AT_FDCWD, path, name.flags});
}

/// The first letter of the switch's word, 0 without one.
char word() {
    static const auto openReal = real<int (*)(const char*, int, ...)>("open");
    static const auto readReal = real<ssize_t (*)(int, void*, std::size_t)>("read");
    const char* const name = std::getenv("CORVANE_STALL_SWITCH");
    const int file = name != nullptr ? openReal(name, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) return 0;
    char letter = 0;
    const ssize_t length = readReal(file, &letter, 1);
    close(file);
    return length == 1 ? letter : '\0';
}

bool holds(char word, Call call) {
    if (call == Call::Write) return word == 'w';
    const int reach = word == 'a' ? 3 : word == 'o' ? 2 : word == 'r' ? 1 : 0;
    return reach > (call == Call::Look ? 2 : call == Call::Open ? 1 : 0);
}

bool isPulledOut(char word) { return word == 'g' || word == 'd'; }

/// Waits while the call is held. Whether it fails then, with errno set: the drive was pulled out.
template <class Place>
bool fails(Place place, Call call) {
    if (!isBelow(place)) return false;
    char now = word();
    for (; holds(now, call); now = word()) poll(nullptr, 0, kLookMs);
    if (now == 's') poll(nullptr, 0, call == Call::Read ? kSlowReadMs : kSlowMs);
    if (!isPulledOut(now)) return false;
    errno = call == Call::Read || call == Call::Write ? EIO : now == 'g' ? ENOENT : ENODEV;
    return true;
}

template <class Result>
Result failure() {
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return -1;
    }
}

}  // namespace

// NOLINTBEGIN: the system's own declarations
extern "C" {

#define CORVANE_STALLED(call, place, result, name, parameters, arguments) \
    __attribute__((visibility("default"))) result name parameters {       \
        static const auto next = real<result(*) parameters>(#name);       \
        if (fails(place, call)) return failure<result>();                 \
        return next arguments;                                            \
    }

#define CORVANE_OPENED(name)                                                            \
    __attribute__((visibility("default"))) int name(const char* path, int flags, ...) { \
        static const auto next = real<int (*)(const char*, int, ...)>(#name);           \
        va_list more;                                                                   \
        va_start(more, flags);                                                          \
        const mode_t mode = va_arg(more, mode_t);                                       \
        va_end(more);                                                                   \
        if (fails(path, Call::Open)) return -1;                                         \
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
        if (fails(path, Call::Open)) return -1;                                                     \
        return next(folder, path, flags, mode);                                                     \
    }
CORVANE_OPENED_AT(openat)
CORVANE_OPENED_AT(openat64)

CORVANE_STALLED(Call::Open, path, FILE*, fopen, (const char* path, const char* mode), (path, mode))
CORVANE_STALLED(Call::Open, path, FILE*, fopen64, (const char* path, const char* mode), (path, mode))
CORVANE_STALLED(Call::Look, path, int, stat, (const char* path, struct stat* to), (path, to))
CORVANE_STALLED(Call::Look, path, int, stat64, (const char* path, struct stat64* to), (path, to))
CORVANE_STALLED(Call::Look, Name{path}, int, lstat, (const char* path, struct stat* to), (path, to))
CORVANE_STALLED(Call::Look, Name{path}, int, lstat64, (const char* path, struct stat64* to), (path, to))
CORVANE_STALLED(Call::Look, (InFolder{folder, path, flags}), int, fstatat,
                (int folder, const char* path, struct stat* to, int flags), (folder, path, to, flags))
CORVANE_STALLED(Call::Look, (InFolder{folder, path, flags}), int, fstatat64,
                (int folder, const char* path, struct stat64* to, int flags), (folder, path, to, flags))
CORVANE_STALLED(Call::Look, (InFolder{folder, path, flags}), int, statx,
                (int folder, const char* path, int flags, unsigned mask, struct statx* to),
                (folder, path, flags, mask, to))
CORVANE_STALLED(Call::Look, path, int, access, (const char* path, int mode), (path, mode))
CORVANE_STALLED(Call::Look, path, DIR*, opendir, (const char* path), (path))
CORVANE_STALLED(Call::Look, Name{path}, ssize_t, readlink, (const char* path, char* to, std::size_t size),
                (path, to, size))
CORVANE_STALLED(Call::Read, file, ssize_t, read, (int file, void* to, std::size_t count), (file, to, count))
CORVANE_STALLED(Call::Read, file, ssize_t, pread, (int file, void* to, std::size_t count, off_t from),
                (file, to, count, from))
CORVANE_STALLED(Call::Read, file, ssize_t, pread64, (int file, void* to, std::size_t count, off64_t from),
                (file, to, count, from))
// What a hardened program calls in their place.
CORVANE_STALLED(Call::Read, file, ssize_t, __read_chk, (int file, void* to, std::size_t count, std::size_t room),
                (file, to, count, room))
CORVANE_STALLED(Call::Read, file, ssize_t, __pread_chk,
                (int file, void* to, std::size_t count, off_t from, std::size_t room), (file, to, count, from, room))
CORVANE_STALLED(Call::Read, file, ssize_t, __pread64_chk,
                (int file, void* to, std::size_t count, off64_t from, std::size_t room), (file, to, count, from, room))
CORVANE_STALLED(Call::Write, file, int, fsync, (int file), (file))

/// Its own calls to read are inside the system's library, where nothing comes between.
__attribute__((visibility("default"))) std::size_t fread(void* to, std::size_t size, std::size_t count, FILE* file) {
    static const auto next = real<std::size_t (*)(void*, std::size_t, std::size_t, FILE*)>("fread");
    if (!fails(fileno(file), Call::Read)) return next(to, size, count, file);
    file->_flags |= kErrorSeen;
    return 0;
}

/// Nothing of a drive that does not answer is in memory.
__attribute__((visibility("default"))) ssize_t preadv2(int file, const iovec* parts, int count, off_t from, int flags) {
    static const auto next = real<ssize_t (*)(int, const iovec*, int, off_t, int)>("preadv2");
    const char now = isBelow(file) ? word() : '\0';
    if ((flags & RWF_NOWAIT) != 0 && (holds(now, Call::Read) || isPulledOut(now))) {
        errno = EAGAIN;
        return -1;
    }
    return next(file, parts, count, from, flags);
}

}  // extern "C"
// NOLINTEND
