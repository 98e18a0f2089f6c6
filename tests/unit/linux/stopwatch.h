// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
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
        std::chrono::nanoseconds all(0);
        for (const auto& [thread, waited] : waits()) {
            const auto before = before_.find(thread);
            all += waited - (before == before_.end() ? std::chrono::nanoseconds(0) : before->second);
        }
        return std::clamp(std::chrono::duration_cast<Milliseconds>(all), Milliseconds(0), passed());
    }
    /// Without it.
    Milliseconds own() const { return passed() - heldUp(); }

private:
    /// Of each thread since it began; none where the kernel does not count it.
    using Waits = std::map<std::string, std::chrono::nanoseconds>;
    Waits waits() const {
        Waits all;
        for (const std::string& process : {std::string("self"), other_}) {
            std::error_code gone;
            for (std::filesystem::directory_iterator threads("/proc/" + process + "/task", gone), end;
                 !process.empty() && !gone && threads != end; threads.increment(gone)) {
                std::int64_t ran = 0, ready = 0;
                if (std::ifstream(threads->path() / "schedstat") >> ran >> ready)
                    all[threads->path().string()] = std::chrono::nanoseconds(ready);
            }
        }
        return all;
    }

    const std::string other_;
    const Waits before_ = waits();
    const Clock::time_point begin_ = Clock::now();
};

}  // namespace corvane::test
