// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>

#include "workers/worker.h"

namespace corvane::test {

/// A copy of this process, without threads that the copy would take for its own.
inline pid_t forkAlone() {
    EXPECT_TRUE(Worker::endAll(std::chrono::seconds(10)));
    return fork();
}

}  // namespace corvane::test
