// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/drive_calls.h"

#include <mntent.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string_view>
#include <thread>

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
    bool wait(Patience patience) {
        std::unique_lock lock(mutex);
        return finished.wait_for(lock, patience, [this] { return done; });
    }
};

bool DriveCalls::run(const std::string& path, Patience patience, std::function<void()> question) {
    unanswered_.erase(std::remove_if(unanswered_.begin(), unanswered_.end(),
                                     [](const Unanswered& one) { return one.call->wait(Patience(0)); }),
                      unanswered_.end());
    if (!unanswered_.empty()) {
        const std::string drive = driveOf(path);
        for (const Unanswered& one : unanswered_) {
            if (one.drive == drive) return false;
        }
    }
    const auto call = std::make_shared<Call>();
    // Not joined: it may hang in the system for as long as the drive does.
    std::thread([call, question = std::move(question)] {
        question();
        call->finish();
    }).detach();
    if (call->wait(patience)) return true;
    unanswered_.push_back({driveOf(path), call});
    return false;
}

}  // namespace corvane
