// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_process.h"

namespace corvane {

double FakeRandom::next() {
    log_.asked("random.next");
    if (!numbers.empty()) {
        const double number = numbers.front();
        numbers.pop_front();
        return number;
    }
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<double>(state_ >> 8U) / 16777216.0;
}

}  // namespace corvane
