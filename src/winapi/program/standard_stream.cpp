// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/standard_stream.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>

#include "types/printable.h"
#include "winapi/text.h"
#include "workers/worker.h"

namespace corvane {

namespace {

/// All lines together are waited for so long.
constexpr std::chrono::milliseconds kPatience{1000};
/// Bytes that wait for their reader; what goes beyond is left out.
constexpr std::size_t kMostWaiting = 256 * 1024;

HANDLE handleOf(DWORD stream) {
    const HANDLE given = GetStdHandle(stream);
    if (given != nullptr && given != INVALID_HANDLE_VALUE) return given;
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return nullptr;
    const HANDLE console = GetStdHandle(stream);
    return console != INVALID_HANDLE_VALUE ? console : nullptr;
}

/// The lines that were not taken yet, in their order, and the task that writes them.
class Lines {
public:
    /// False: too many wait already.
    bool add(std::string line) {
        const std::lock_guard lock(mutex_);
        if (bytes_ + line.size() > kMostWaiting) return false;
        bytes_ += line.size();
        waiting_.push_back(std::move(line));
        return true;
    }
    /// True: a task is to be started, which calls write().
    bool begin() {
        const std::lock_guard lock(mutex_);
        return !std::exchange(writing_, true);
    }
    void write();
    void leave();
    /// Waits until all are written, within the patience that is left.
    void wait();

private:
    std::mutex mutex_;  ///< guards all of it
    std::condition_variable written_;
    std::deque<std::string> waiting_;  ///< the first one is being written
    std::size_t bytes_ = 0;
    bool writing_ = false;
    std::chrono::steady_clock::duration patience_ = kPatience;
};

void Lines::write() {
    std::unique_lock lock(mutex_);
    while (!waiting_.empty()) {
        const std::string& line = waiting_.front();  // stays where it is while others are added behind it
        lock.unlock();
        writeTo(STD_ERROR_HANDLE, line);
        lock.lock();
        bytes_ -= line.size();
        waiting_.pop_front();
    }
    writing_ = false;
    written_.notify_all();
}

void Lines::leave() {
    const std::lock_guard lock(mutex_);
    writing_ = false;
    written_.notify_all();
}

void Lines::wait() {
    std::unique_lock lock(mutex_);
    const auto begun = std::chrono::steady_clock::now();
    written_.wait_for(lock, patience_, [this] { return !writing_; });
    patience_ -= std::min(patience_, std::chrono::steady_clock::now() - begun);
}

}  // namespace

bool writeTo(DWORD stream, const std::string& text) {
    const HANDLE to = handleOf(stream);
    if (to == nullptr) return false;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(to, &mode) != 0) {  // a console takes letters, whatever its code page
        const std::wstring wide = toWide(text);
        return WriteConsoleW(to, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr) != 0;
    }
    return WriteFile(to, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
}

void tellOnErrors(const std::string& text) {
    static const auto lines = std::make_shared<Lines>();
    if (!lines->add("corvane: " + printable(text) + "\r\n")) return;
    const auto write = [to = lines](const Worker::GiveUp&) { to->write(); };
    const auto broken = [to = lines] { to->leave(); };
    if (lines->begin() && !Worker::run(write, broken)) return lines->leave();
    lines->wait();
}

}  // namespace corvane
