// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/idle_state.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr EXECUTION_STATE kAwake = ES_DISPLAY_REQUIRED | ES_SYSTEM_REQUIRED;

/// What the system holds for this thread. It tells it to who sets it, and it is set to the same again.
EXECUTION_STATE held() {
    const EXECUTION_STATE before = SetThreadExecutionState(ES_CONTINUOUS);
    SetThreadExecutionState(ES_CONTINUOUS | (before & kAwake));
    return before & (kAwake | ES_CONTINUOUS);
}

struct IdleContract : ::testing::Test {
    IdleContract() { SetThreadExecutionState(ES_CONTINUOUS); }
    ~IdleContract() override { SetThreadExecutionState(ES_CONTINUOUS); }
};

/// WIN-55: Screen and machine stay awake from when they are asked to until they are let go
TEST_F(IdleContract, ScreenAndMachineStayAwakeUntilTheyAreLetGo) {
    IdleState idle;
    EXPECT_EQ(held() & kAwake, 0U) << "nothing is asked for by being there";
    idle.inhibit(true);
    EXPECT_EQ(held(), kAwake | ES_CONTINUOUS);
    EXPECT_EQ(held(), kAwake | ES_CONTINUOUS) << "for good, not for once";
    idle.inhibit(true);
    EXPECT_EQ(held(), kAwake | ES_CONTINUOUS);
    idle.inhibit(false);
    EXPECT_EQ(held() & kAwake, 0U);
    idle.inhibit(true);
    EXPECT_EQ(held(), kAwake | ES_CONTINUOUS) << "and again";
}

/// WIN-55
TEST_F(IdleContract, IsLetGoWhenItGoes) {
    {
        IdleState idle;
        idle.inhibit(true);
        EXPECT_EQ(held(), kAwake | ES_CONTINUOUS);
    }
    EXPECT_EQ(held() & kAwake, 0U);
}

/// WIN-55
TEST_F(IdleContract, TheSameAgainAsksTheSystemForNothing) {
    IdleState idle;
    idle.inhibit(true);
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);  // somebody else's of this thread
    idle.inhibit(true);
    EXPECT_EQ(held() & kAwake, static_cast<EXECUTION_STATE>(ES_SYSTEM_REQUIRED));
    idle.inhibit(false);
    EXPECT_EQ(held() & kAwake, 0U);
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
    idle.inhibit(false);
    EXPECT_EQ(held() & kAwake, static_cast<EXECUTION_STATE>(ES_SYSTEM_REQUIRED));
}

}  // namespace
}  // namespace corvane
