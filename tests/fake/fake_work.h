// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>

#include "fake/schedule.h"
#include "platform/event_loop.h"
#include "platform/ports.h"

namespace corvane {

/// Work on the files in memory. A task runs at once and whole when half of its time is over; its end is told when all
/// is.
class FakeWork : public FileWork {
public:
    FakeWork(EventLoop& loop, Schedule& schedule, Files& files) : loop_(loop), schedule_(schedule), files_(files) {}

    std::unique_ptr<Run> begin(Task task, std::function<void(bool ended)> done) override {
        ++begun;
        auto state = std::make_shared<State>(State{*this, std::move(task), std::move(done)});
        schedule_.at(schedule_.now() + taskMs / 2, [wanted = std::weak_ptr(state)] {
            const auto run = wanted.lock();
            if (!run || run->work.refuses) return;
            FakeCourse course(*run);
            run->task(course);
        });
        schedule_.at(schedule_.now() + taskMs, [wanted = std::weak_ptr(state)] {
            const auto run = wanted.lock();
            if (!run) return;
            run->work.loop_.post([wanted] {
                if (const auto one = wanted.lock()) one->done(!one->work.refuses);
            });
        });
        return std::make_unique<FakeRun>(std::move(state));
    }

    int taskMs = 0;        ///< how long one takes
    int begun = 0;         ///< so far
    bool refuses = false;  ///< there is no thread

private:
    struct State {
        FakeWork& work;
        Task task;
        std::function<void(bool ended)> done;
        std::size_t told = 0;
    };
    class FakeCourse : public Course {
    public:
        explicit FakeCourse(State& state) : state_(state), began_(state.work.schedule_.now()) {}
        Files& files() override { return state_.work.files_; }
        bool isGivenUp() const override { return false; }
        std::int64_t milliseconds() override { return state_.work.schedule_.now() - began_; }
        void tell(std::size_t count) override { state_.told = count; }

    private:
        State& state_;
        std::int64_t began_;
    };
    class FakeRun : public Run {
    public:
        explicit FakeRun(std::shared_ptr<State> state) : state_(std::move(state)) {}
        std::size_t told() const override { return state_->told; }

    private:
        std::shared_ptr<State> state_;
    };

    EventLoop& loop_;
    Schedule& schedule_;
    Files& files_;
};

}  // namespace corvane
