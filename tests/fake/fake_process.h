// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "fake/call_log.h"
#include "platform/ports.h"

namespace corvane {

/// A process whose surroundings a test sets. After its end posted events are held for good.
class FakeProcess : public Process {
public:
    FakeProcess(EventLoop& loop, CallLog& log) : loop_(loop), log_(log) {}

    bool onlyInstance(const ListTaker& /*taken*/) override {
        log_.did("process.onlyInstance");
        return isOnlyInstance;
    }
    bool startedByDesktop() override { return byDesktop; }
    int platformId() override { return platform; }
    std::string programFolder() override { return folder; }
    std::string commandLine() override { return arguments; }
    std::vector<std::string> filesToOpen() override { return opened; }
    void end() override {
        log_.did("process.end");
        if (!ended_) ended_.emplace(loop_);
    }
    bool ending() const override { return ended_.has_value(); }

    bool isOnlyInstance = true;
    bool byDesktop = false;
    int platform = 2;
    std::string folder = "/app";
    std::string arguments;
    std::vector<std::string> opened;

private:
    EventLoop& loop_;
    CallLog& log_;
    std::optional<EventLoop::Hold> ended_;
};

/// Numbers from a script; when it is used up, a fixed sequence of its own.
class FakeRandom : public Random {
public:
    explicit FakeRandom(CallLog& log) : log_(log) {}

    void seedFromClock() override { log_.did("random.seedFromClock"); }
    double next() override;

    std::deque<double> numbers;  ///< each in [0, 1)

private:
    CallLog& log_;
    std::uint32_t state_ = 1;
};

}  // namespace corvane
