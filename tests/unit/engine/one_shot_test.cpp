// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/one_shot.h"

#include <gtest/gtest.h>

#include <memory>

#include "fake/fake_machine.h"

namespace corvane {
namespace {

class OneShotTest : public testing::Test {
protected:
    FakeMachine machine_;
    int due_ = 0;
    std::unique_ptr<OneShot> shot_ = std::make_unique<OneShot>(machine_.timers, [this] { ++due_; });
};

TEST_F(OneShotTest, IsDueOnceWhenItsTimeIsOver) {
    EXPECT_FALSE(shot_->runs());
    shot_->start(100);
    EXPECT_TRUE(shot_->runs());
    machine_.advance(99);
    EXPECT_EQ(due_, 0);
    machine_.advance(1);
    EXPECT_EQ(due_, 1);
    EXPECT_FALSE(shot_->runs());
    machine_.advance(1000);
    EXPECT_EQ(due_, 1);
    EXPECT_EQ(machine_.timers.running(), 0);
}

TEST_F(OneShotTest, AStartTakesThePlaceOfTheOneBefore) {
    shot_->start(100);
    machine_.advance(60);
    shot_->start(100);
    machine_.advance(60);
    EXPECT_EQ(due_, 0);
    machine_.advance(40);
    EXPECT_EQ(due_, 1);
}

TEST_F(OneShotTest, WhatIsStoppedOrGoneIsNotDue) {
    shot_->start(100);
    shot_->stop();
    machine_.advance(200);
    shot_->start(100);
    shot_.reset();
    machine_.advance(200);
    EXPECT_EQ(due_, 0);
    EXPECT_EQ(machine_.timers.running(), 0);
}

TEST_F(OneShotTest, ItMayBeginAnewOrGoWhenItIsDue) {
    shot_ = std::make_unique<OneShot>(machine_.timers, [this] {
        if (++due_ < 3) return shot_->start(10);
        shot_.reset();
        ++due_;
    });
    shot_->start(10);
    machine_.advance(100);
    EXPECT_EQ(due_, 4);
    EXPECT_EQ(shot_, nullptr);
}

}  // namespace
}  // namespace corvane
