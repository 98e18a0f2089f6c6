// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include "workers/worker.h"

namespace corvane::test {

/// A copy of this process, without threads that the copy would take for its own.
inline pid_t forkAlone() {
    Worker::leaveKept();
    return fork();
}

}  // namespace corvane::test
