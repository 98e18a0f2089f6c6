// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "winapi/api.h"
#include "workers/worker.h"

namespace corvane {

/// Asks drives across the network, which may not answer for a minute when the other machine is gone: in a worker, and
/// for so long only. A drive that keeps one question waiting is not asked another before it has answered that.
class FarDrives {
public:
    static constexpr std::chrono::milliseconds kPatience{2000};
    static constexpr std::chrono::milliseconds kLongPatience{10'000};  ///< for a save

    /// The one of the whole process.
    static FarDrives& all();

    /// Names the drive ("Z:", "\\machine\share") where a path lies on one across the network; "" otherwise. Asks
    /// nobody elsewhere.
    static std::wstring driveOf(const std::wstring& path);
    /// What kind of drive a root, such as "Z:\", is of: the system's own answer, or a test's.
    static inline UINT(WINAPI* kindOfDrive)(LPCWSTR root) = &GetDriveTypeW;

    /// What `question` returns; empty when it took too long, when it threw, or when the system has no thread for it.
    /// The question may run on by itself: it holds all that it uses.
    template <class T>
    std::optional<T> ask(const std::wstring& drive, std::chrono::milliseconds patience, std::function<T()> question) {
        if (!state_->begin(drive)) return std::nullopt;
        auto answer = std::make_shared<std::optional<T>>();
        const auto task = [state = state_, drive, answer, question = std::move(question)](const Worker::GiveUp&) {
            std::optional<T> found = question();
            state->end(drive, [&] { *answer = std::move(found); });
        };
        if (!Worker::runOnKept(task, [state = state_, drive] { state->end(drive, [] {}); })) {
            state_->end(drive, [] {});
            return std::nullopt;
        }
        return state_->wait(drive, patience) ? std::move(*answer) : std::nullopt;
    }

private:
    struct State {
        bool begin(const std::wstring& drive);
        void end(const std::wstring& drive, const std::function<void()>& answer);
        bool wait(const std::wstring& drive, std::chrono::milliseconds patience);

        std::mutex mutex;  ///< guards what follows, and the answers
        std::condition_variable ended;
        std::set<std::wstring> asked;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace corvane
