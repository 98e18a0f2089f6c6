// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/drive_calls.h"

#include <mntent.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdio>
#include <string_view>

#include "workers/worker.h"

namespace corvane {

namespace {

bool isBelow(std::string_view path, std::string_view place) {
    return path.substr(0, place.size()) == place && (path.size() == place.size() || path[place.size()] == '/');
}

/// Where the drive of a path is mounted, found without asking the drive. On the drive of the system itself, which
/// holds too much to be given up whole, the path's folder.
std::string driveOf(const std::string& path) {
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(setmntent("/proc/self/mounts", "re"), endmntent);
    std::string drive;
    mntent mount{};
    std::array<char, 8192> buffer{};
    while (mounts && getmntent_r(mounts.get(), &mount, buffer.data(), static_cast<int>(buffer.size())) != nullptr) {
        const std::string_view place = mount.mnt_dir;
        if (place.size() > drive.size() && place != "/" && isBelow(path, place)) drive = place;
    }
    return drive.empty() ? path.substr(0, path.rfind('/')) : drive;
}

/// How soon a wait ends that is given up.
constexpr std::chrono::milliseconds kLook{10};

}  // namespace

struct DriveCalls::Call {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;

    void finish() {
        const std::lock_guard lock(mutex);
        done = true;
        finished.notify_all();
    }
    bool isDone() {
        const std::lock_guard lock(mutex);
        return done;
    }
    /// False: not done when it was due, or given up before.
    bool wait(Clock::time_point due, const std::atomic<bool>* giveUp) {
        std::unique_lock lock(mutex);
        while (!done && !(giveUp != nullptr && *giveUp)) {
            const auto now = Clock::now();
            if (now >= due) return false;
            finished.wait_until(lock, giveUp != nullptr ? std::min(due, now + kLook) : due);
        }
        return done;
    }
};

DriveCalls& DriveCalls::all() {
    static auto* const calls = new DriveCalls;
    return *calls;
}

void DriveCalls::release(std::shared_ptr<void> last) {
    Worker::run(
        [last = std::make_shared<std::shared_ptr<void>>(std::move(last))](const Worker::GiveUp&) { last->reset(); });
}

std::optional<DriveCalls::Unanswered> DriveCalls::unansweredOf(const std::string& path) {
    const std::lock_guard lock(mutex_);
    std::erase_if(unanswered_, [](const Unanswered& one) { return one.call->isDone(); });
    if (unanswered_.empty()) return std::nullopt;
    const std::string drive = driveOf(path);
    for (const Unanswered& one : unanswered_) {
        if (one.drive == drive) return one;
    }
    return std::nullopt;
}

/// An overdue answer refuses the next question. One that was given up early, as by a press of stop, is only waited for.
bool DriveCalls::mayAsk(const std::string& path, Clock::time_point due, const std::atomic<bool>* giveUp) {
    while (const auto before = unansweredOf(path)) {
        if (Clock::now() >= before->due || !before->call->wait(std::min(due, before->due), giveUp)) return false;
    }
    return true;
}

bool DriveCalls::run(const std::string& path, Wait wait, std::function<void()> question) {
    const Clock::time_point due = Clock::now() + wait.patience;
    if (!mayAsk(path, due, wait.giveUp)) return false;
    const auto call = std::make_shared<Call>();
    const auto ask = [call, question = std::move(question)](const Worker::GiveUp&) {
        question();
        call->finish();
    };
    const bool asked = Worker::run(ask, [call] { call->finish(); });
    if (!asked) return false;
    if (call->wait(due, wait.giveUp)) return true;
    const std::lock_guard lock(mutex_);
    unanswered_.push_back({driveOf(path), call, due});
    return false;
}

}  // namespace corvane
