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
#include "unit/linux/fork_alone.h"

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
        test::leaveThreads();
        EXPECT_EXIT(
            {
                std::signal(each, SIG_DFL);
                EndSignals toEnd;
                toEnd.listen([] {});
                endAfter(each);
            },
            ::testing::ExitedWithCode(kHeard), "")
            << each;
    }
}

TEST(EndSignals, EndTheProgramWhileNobodyListens) {
    test::leaveThreads();
    EXPECT_EXIT(
        {
            std::signal(SIGTERM, SIG_DFL);
            EndSignals toEnd;
            endAfter(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "")
        << "before there is a panel";
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_DFL);
            EndSignals toEnd;
            toEnd.listen([] {});
            toEnd.leave();
            endAfter(SIGHUP);
        },
        ::testing::KilledBySignal(SIGHUP), "")
        << "after it has gone";
}

/// WIN-74: A signal that the player was started to ignore, as a hang-up where it is to outlive its terminal, stays
/// ignored
TEST(EndSignals, WhatTheStarterIgnoresStaysIgnored) {
    test::leaveThreads();
    EXPECT_EXIT(
        {
            std::signal(SIGHUP, SIG_IGN);
            std::signal(SIGTERM, SIG_DFL);
            EndSignals toEnd;
            toEnd.listen([] {});
            sigset_t kept{};
            pthread_sigmask(SIG_BLOCK, nullptr, &kept);
            raise(SIGHUP);
            _exit(sigismember(&kept, SIGHUP) == 0 && sigismember(&kept, SIGTERM) == 1 ? kNotHeard : kHeard);
        },
        ::testing::ExitedWithCode(kNotHeard), "");
}

}  // namespace
}  // namespace corvane
