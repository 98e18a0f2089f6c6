// SPDX-License-Identifier: GPL-3.0-or-later
// Each in a process of its own, whose threads have the signals kept from them. What is heard in the loop of the real
// program is told by the stories of its end.
#include "linux/end_signals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "drives/drive_calls.h"

namespace corvane {
namespace {

constexpr int kHeard = 3, kNotHeard = 4;

/// Sends itself the signal and ends with kHeard when a look that is waited for would be hurried.
[[noreturn]] void endAfter(int signal) {
    using namespace std::chrono_literals;
    kill(getpid(), signal);
    for (const auto until = std::chrono::steady_clock::now() + 5s;
         !DriveCalls::hurried && std::chrono::steady_clock::now() < until;) {
        std::this_thread::yield();
    }
    _exit(DriveCalls::hurried ? kHeard : kNotHeard);
}

TEST(EndSignals, AreHeardWhileTheUserInterfaceWaits) {
    for (const int each : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EXIT(
            {
                EndSignals toEnd;
                toEnd.listen([] {});
                endAfter(each);
            },
            ::testing::ExitedWithCode(kHeard), "")
            << each;
    }
}

TEST(EndSignals, EndTheProgramWhileNobodyListens) {
    EXPECT_EXIT(
        {
            EndSignals toEnd;
            endAfter(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "")
        << "before there is a panel";
    EXPECT_EXIT(
        {
            EndSignals toEnd;
            toEnd.listen([] {});
            toEnd.leave();
            endAfter(SIGHUP);
        },
        ::testing::KilledBySignal(SIGHUP), "")
        << "after it has gone";
}

}  // namespace
}  // namespace corvane
