// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/stage.h"
#include "fake/fake_machine.h"

namespace corvane {

/// The machine in memory as a stage of any contract that needs a loop and time.
template <class S>
class FakeStage : public S {
public:
    EventLoop& loop() override { return machine.loop; }
    std::int64_t now() override { return machine.schedule.now(); }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        machine.settle();
        for (int passed = 0; passed < atMostMs && !condition(); ++passed) machine.advance(1);
        return condition();
    }

protected:
    FakeMachine machine;
};

}  // namespace corvane
