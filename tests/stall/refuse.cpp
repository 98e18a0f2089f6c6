// SPDX-License-Identifier: GPL-3.0-or-later
// A system that has no thread left, for tests: while the file that CORVANE_REFUSE_THREADS names exists, no further
// thread can be made; where it can be executed, by the process's first thread alone.
#include <dlfcn.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

// NOLINTBEGIN: the system's own declaration
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* made, const pthread_attr_t* attributes,
                                                                     void* (*start)(void*), void* argument) {
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto next = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    const char* const name = std::getenv("CORVANE_REFUSE_THREADS");
    const auto is = [name](int mode) { return name != nullptr && syscall(SYS_access, name, mode) == 0; };
    const bool firstMay = is(X_OK) && syscall(SYS_gettid) == getpid();
    if (is(F_OK) && !firstMay) return EAGAIN;
    return next(made, attributes, start, argument);
}
// NOLINTEND
