// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace corvane::test {

/// Measures what takes long by itself, not because other programs have the processors: begun when it is made.
class Stopwatch {
public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    Stopwatch() = default;
    /// Another program that it depends on counts as well.
    explicit Stopwatch(std::int64_t process) : other_(std::to_string(process)) {}

    /// By the clock on the wall.
    Milliseconds passed() const { return std::chrono::duration_cast<Milliseconds>(Clock::now() - begin_); }
    /// Of that, what the threads that were ready to run waited for a processor.
    Milliseconds heldUp() const {
        return std::clamp(std::chrono::duration_cast<Milliseconds>(waited() - before_), Milliseconds(0), passed());
    }
    /// Without it.
    Milliseconds own() const { return passed() - heldUp(); }

private:
    /// Of all threads since they began; 0 where the kernel does not count it.
    static std::chrono::nanoseconds waitedBy(const std::string& process) {
        std::int64_t all = 0;
        std::error_code gone;
        for (std::filesystem::directory_iterator threads("/proc/" + process + "/task", gone), end;
             !gone && threads != end; threads.increment(gone)) {
            std::int64_t ran = 0, ready = 0;
            if (std::ifstream(threads->path() / "schedstat") >> ran >> ready) all += ready;
        }
        return std::chrono::nanoseconds(all);
    }
    std::chrono::nanoseconds waited() const {
        return waitedBy("self") + (other_.empty() ? std::chrono::nanoseconds(0) : waitedBy(other_));
    }

    const std::string other_;
    const std::chrono::nanoseconds before_ = waited();
    const Clock::time_point begin_ = Clock::now();
};

}  // namespace corvane::test
