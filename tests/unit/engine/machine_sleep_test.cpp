// SPDX-License-Identifier: GPL-3.0-or-later
// The machine sleeps and wakes up while something plays.
#include "engine/machine_sleep.h"

#include "engine/mdlPublicFunction.h"
#include "unit/engine/session_fixture.h"

namespace corvane {
namespace {

struct Asleep : Session {
    MachineSleep sleep{player};

    void fallAsleep() {
        machine.loop.post([this] { sleep.begins(); });
        machine.settle();
    }
    void wakeUp() {
        machine.loop.post([this] { sleep.isOver(); });
        machine.settle();
    }
};

/// DESK-01: What plays is held where it stands while the machine sleeps, and goes on from there when it is awake
TEST_F(Asleep, WhatPlaysIsHeldAndGoesOnFromThere) {
    for (const char* each : {"/m/one.wav", "/m/clip.avi", "/cd/Track02.cda"}) {
        player.gDelayTime = 1;
        open({each});
        play(5000);
        ASSERT_EQ(now().status, Status::Playing) << each;
        fallAsleep();
        EXPECT_EQ(now().status, Status::Paused) << each;
        const double held = seconds();
        machine.advance(20000);
        EXPECT_NEAR(seconds(), held, 0.05) << each;
        wakeUp();
        EXPECT_EQ(now().status, Status::Playing) << each;
        machine.advance(2000);
        EXPECT_NEAR(seconds(), held + 2, 0.6) << each;
        ask([](MediaSession& s) { return s.stop(); });
    }
}

/// DESK-01
TEST_F(Asleep, PicturesThatChangeByThemselvesWaitAsLong) {
    machine.addPicture("/m/other.bmp", 60, 20);
    player.gInterval = 3;
    open({"/m/view.bmp", "/m/other.bmp"});
    play(1000);
    fallAsleep();
    machine.advance(60000);
    EXPECT_EQ(now().path, "/m/view.bmp");
    wakeUp();
    machine.advance(4000);
    EXPECT_EQ(now().path, "/m/other.bmp");
}

/// DESK-02: What was paused or stopped before the machine slept stays so
TEST_F(Asleep, WhatDidNotPlayDoesNotBegin) {
    openThree();
    fallAsleep();
    wakeUp();
    EXPECT_EQ(now().status, Status::Stopped);
    play(3000);
    pause();
    fallAsleep();
    wakeUp();
    EXPECT_EQ(now().status, Status::Paused);
}

/// DESK-03: What somebody does with the player between the two counts: nothing goes on by itself
TEST_F(Asleep, WhatSomebodyDidMeanwhileCounts) {
    openThree();
    play(3000);
    fallAsleep();
    ask([](MediaSession& s) { return s.stop(); });
    wakeUp();
    EXPECT_EQ(now().status, Status::Stopped);

    play(3000);
    fallAsleep();
    play(1000);
    pause();
    wakeUp();
    EXPECT_EQ(now().status, Status::Paused);

    ask([](MediaSession& s) { return s.next(); });  // to another file, held there
    wakeUp();
    EXPECT_EQ(now().status, Status::Paused);
}

/// DESK-03
TEST_F(Asleep, TheEndOfThePlayerIsTheEnd) {
    openThree();
    play(3000);
    fallAsleep();
    player.gAnimationStep = 15;  // the opening has been
    ask([](MediaSession& s) { return s.quit(); });
    wakeUp();
    machine.advance(5000);
    EXPECT_TRUE(machine.process.ending());
}

/// DESK-04: Told twice that it sleeps, or that it is awake, the player does once what it does
TEST_F(Asleep, WhatIsToldTwiceIsDoneOnce) {
    openThree();
    wakeUp();
    play(3000);
    fallAsleep();
    fallAsleep();
    EXPECT_EQ(now().status, Status::Paused);
    wakeUp();
    EXPECT_EQ(now().status, Status::Playing);
    pause();
    wakeUp();
    EXPECT_EQ(now().status, Status::Paused);
}

}  // namespace
}  // namespace corvane
