// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/ports.h"

namespace corvane {

/// Lengths in memory, each told as an event of its own.
class FakeLengths : public LengthReader {
public:
    explicit FakeLengths(EventLoop& loop) : loop_(loop) {}
    void read(const std::string& path, std::int16_t /*kind*/, Done done) override {
        asked.push_back(path);
        held_ = [this, path, done, number = ++number_] {
            if (number != number_) return;
            const auto found = lengths.find(path);
            done(found == lengths.end() ? std::nullopt : std::optional(found->second));
        };
        if (!slow) tell();
    }
    void giveUp() override { ++number_; }
    void tell() { loop_.post(held_); }

    std::map<std::string, std::int64_t> lengths;
    std::vector<std::string> asked;
    bool slow = false;

private:
    EventLoop& loop_;
    EventLoop::Handler held_;
    int number_ = 0;
};

}  // namespace corvane
