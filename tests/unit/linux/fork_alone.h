// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include "workers/worker.h"

namespace corvane::test {

/// Before a copy of this process is made, by a test that ends in one: it would hand its tasks to threads that it has
/// not.
inline void leaveThreads() { Worker::leaveKept(); }

/// A copy of this process, without threads that the copy would take for its own.
inline pid_t forkAlone() {
    leaveThreads();
    return fork();
}

}  // namespace corvane::test
