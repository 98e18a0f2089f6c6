// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/woken_loop.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// A system's queue that a test runs by hand.
class TriedLoop : public WokenLoop {
public:
    using WokenLoop::called;
    bool accepts = true;
    int calls = 0;

protected:
    bool callSoon() override {
        ++calls;
        return accepts;
    }
};

TEST(WokenLoops, AskForOneCallABatch) {
    TriedLoop loop;
    int ran = 0;
    for (int i = 0; i < 3; ++i) loop.post([&] { ++ran; });
    EXPECT_EQ(loop.calls, 1);
    loop.called();
    EXPECT_EQ(ran, 3);
    loop.post([&] { ++ran; });
    EXPECT_EQ(loop.calls, 2);
}

TEST(WokenLoops, AskAgainWhereTheSystemRefused) {
    TriedLoop loop;
    loop.accepts = false;
    loop.post([] {});
    loop.accepts = true;
    loop.post([] {});
    EXPECT_EQ(loop.calls, 2);
    loop.post([] {});
    EXPECT_EQ(loop.calls, 2);
}

TEST(WokenLoops, RunNothingAfterTheirStop) {
    TriedLoop loop;
    int ran = 0;
    loop.post([&] {
        ++ran;
        loop.stop();
    });
    loop.post([&] { ++ran; });
    loop.called();
    EXPECT_EQ(ran, 1) << "the batch that was running is broken off";
    EXPECT_TRUE(loop.stopped());
    loop.post([&] { ++ran; });
    EXPECT_EQ(loop.calls, 1) << "nothing is asked for any more";
    loop.called();
    EXPECT_EQ(ran, 1) << "a call that was under way does nothing";
}

}  // namespace
}  // namespace corvane
