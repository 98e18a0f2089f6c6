// SPDX-License-Identifier: GPL-3.0-or-later
// Qt starts a process by a clone that shares its parent's memory until it runs something else. ThreadSanitizer's own
// hook takes it for a fork: in the child it turns itself off for good, and with it the parent's calling thread, whose
// locks are then no longer seen. Under that sanitizer a copy of the memory is made instead, as fork does.
#ifdef __SANITIZE_THREAD__

#include <dlfcn.h>
#include <sched.h>
#include <sys/types.h>

#include <cstdarg>

extern "C" int clone(int (*run)(void*), void* stack, int flags, void* argument, ...) {
    using Clone = int (*)(int (*)(void*), void*, int, void*, pid_t*, void*, pid_t*);
    va_list rest;
    va_start(rest, argument);
    auto* const parentId = va_arg(rest, pid_t*);
    auto* const storage = va_arg(rest, void*);
    auto* const childId = va_arg(rest, pid_t*);
    va_end(rest);
    static const auto next = reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"));
    if ((flags & CLONE_VFORK) != 0) flags &= ~(CLONE_VM | CLONE_VFORK);
    return next(run, stack, flags, argument, parentId, storage, childId);
}

#endif
