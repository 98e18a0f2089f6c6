// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_loop.h"

#include <stdexcept>

namespace corvane {

void FakeLoop::drain() {
    constexpr int kMostRounds = 100000;
    for (int round = 0; woken_ && !held(); ++round) {
        if (round == kMostRounds) throw std::logic_error("events that post events without end");
        woken_ = false;
        runPending();
    }
}

}  // namespace corvane
