// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/drive_calls.h"

#include <mntent.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <condition_variable>
#include <cstdio>
#include <string_view>

#include "workers/worker.h"

namespace corvane {

namespace {

bool isBelow(std::string_view path, std::string_view place) {
    return path.substr(0, place.size()) == place && (path.size() == place.size() || path[place.size()] == '/');
}

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

/// Where the drive of a path is mounted, found without asking the drive; "" for the drive of the system itself.
std::string mountOf(const std::string& path) {
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(setmntent("/proc/self/mounts", "re"), endmntent);
    std::string drive;
    mntent mount{};
    std::array<char, 8192> buffer{};
    while (mounts && getmntent_r(mounts.get(), &mount, buffer.data(), static_cast<int>(buffer.size())) != nullptr) {
        const std::string_view place = mount.mnt_dir;
        if (place.size() > drive.size() && place != "/" && isBelow(path, place)) drive = place;
    }
    return drive;
}

constexpr int kMostLinks = 40;  ///< that the system follows in one path

/// Follows the links of a path. Before each look at a name `before` is told the whole path as it is known by then;
/// false from it ends the way. `link` is told each name that is a link.
template <class Before, class Link>
void followLinks(const std::string& path, const Before& before, const Link& link) {
    if (path.size() >= PATH_MAX) return;  // the system takes none so long, and each step costs as much as is left
    std::string way, rest = path;
    for (int links = 0; rest.find_first_not_of('/') != std::string::npos;) {
        const std::size_t begin = rest.find_first_not_of('/');
        const std::size_t end = std::min(rest.find('/', begin), rest.size());
        const std::string name = rest.substr(begin, end - begin);
        rest.erase(0, end);
        if (name == ".") continue;
        if (name == "..") {
            way.erase(std::min(way.rfind('/'), way.size()));
            continue;
        }
        const std::string next = way + '/' + name;
        if (!before(next + rest)) return;
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(next.c_str(), target.data(), target.size());
        if (length <= 0) {
            way = next;
            continue;
        }
        if (++links > kMostLinks) return;
        link(next);
        if (target[0] == '/') way.clear();
        rest = '/' + std::string(target.data(), static_cast<std::size_t>(length)) + rest;
    }
}

/// How soon a wait ends that is given up.
constexpr std::chrono::milliseconds kLook{10};

}  // namespace

struct DriveCalls::Call {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    bool refused = false;            ///< not asked: a link leads to a drive whose answer is overdue
    std::string at;                  ///< the path that is asked for, behind all links that are known
    std::vector<std::string> links;  ///< that led there

    template <class Change>
    void tell(const Change& change) {
        const std::lock_guard lock(mutex);
        change(*this);
    }
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
    Worker::runOnKept(
        [last = std::make_shared<std::shared_ptr<void>>(std::move(last))](const Worker::GiveUp&) { last->reset(); });
}

std::optional<DriveCalls::Unanswered> DriveCalls::unansweredOf(const std::string& path) {
    const std::lock_guard lock(mutex_);
    std::erase_if(unanswered_, [](const Unanswered& one) { return one.call->isDone(); });
    if (unanswered_.empty()) return std::nullopt;
    const Place place{mountOf(path), folderOf(path)};
    for (const Unanswered& one : unanswered_) {
        const bool isByLink = std::any_of(one.links.begin(), one.links.end(),
                                          [&path](const std::string& link) { return isBelow(path, link); });
        // The drive of the system itself holds too much to be given up whole: there a folder is.
        const bool isSame = one.place.mount.empty() ? one.place.folder == place.folder : one.place.mount == place.mount;
        if (isSame || (isByLink && (!one.place.mount.empty() || one.asked == place.folder))) return one;
    }
    return std::nullopt;
}

/// On the call's thread. False: a link leads to a drive whose answer is overdue.
bool DriveCalls::follow(const std::string& path, Call& call) {
    bool isByLink = false, mayGoOn = true;
    const auto before = [&](const std::string& whole) {
        const auto overdue = isByLink ? unansweredOf(whole) : std::nullopt;
        mayGoOn = !overdue || Clock::now() < overdue->due;
        call.tell([&](Call& one) { one.at = whole; });
        return mayGoOn;
    };
    const auto passed = [&](const std::string& name) {
        isByLink = true;
        call.tell([&](Call& one) { one.links.push_back(name); });
    };
    followLinks(path, before, passed);
    if (!mayGoOn) call.tell([](Call& one) { one.refused = true; });
    return mayGoOn;
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
    const auto ask = [this, path, call, question = std::move(question)](const Worker::GiveUp&) {
        if (follow(path, *call)) question();
        call->finish();
    };
    if (!Worker::runOnKept(ask, [call] { call->finish(); })) return false;
    return settle(path, call, call->wait(due, wait.giveUp), due);
}

/// Keeps in mind what was not answered. True: there is an answer.
bool DriveCalls::settle(const std::string& path, const std::shared_ptr<Call>& call, bool answered,
                        Clock::time_point due) {
    const std::lock_guard lock(mutex_);
    const std::lock_guard known(call->mutex);
    if (answered) return !call->refused;
    const std::string& at = call->at.empty() ? path : call->at;
    unanswered_.push_back({{mountOf(at), folderOf(at)}, folderOf(path), call->links, call, due});
    return false;
}

/// Paths that are asked about one after the other. Behind one that hangs, another thread goes on. Who waits is woken
/// for a batch of answers: a thread that is woken for each takes longer than the answer.
class DriveCalls::Row {
public:
    Row(std::vector<Each> paths, std::function<void(std::size_t)> question, Clock::time_point end)
        : paths_(std::move(paths)), question_(std::move(question)), end_(end), begun_(paths_.size()) {
        calls_.reserve(paths_.size());
        for (std::size_t i = 0; i < paths_.size(); ++i) calls_.push_back(std::make_shared<Call>());
    }
    const Each& path(std::size_t at) const { return paths_[at]; }
    const std::shared_ptr<Call>& call(std::size_t at) const { return calls_[at]; }
    /// Nobody waits any more for those before this one.
    void leave(std::size_t before) { left_ = before; }

    /// On its thread, which ends behind a question that nobody waits for any more.
    void ask(DriveCalls& drives) {
        std::string plainFolder;  // of the path before: none of its parts is a link
        while (Clock::now() < end_) {
            const std::size_t at = next_++;
            if (at >= paths_.size()) return;
            {
                const std::lock_guard lock(mutex_);
                begun_[at] = Clock::now();
            }
            ask(drives, at, plainFolder);
            finish(at);
            if (at < left_) return;
        }
    }

    /// Waits for that answer, and takes those behind it that are there by then. False: it is overdue, or given up.
    bool wait(std::size_t at, const std::atomic<bool>* giveUp) {
        std::unique_lock lock(mutex_);
        const auto waitsFrom = Clock::now();
        while (!calls_[at]->isDone() && !(giveUp != nullptr && *giveUp)) {
            const auto now = Clock::now();
            const auto due = std::min(end_, begun_[at].value_or(waitsFrom) + paths_[at].patience);
            if (now >= due) return false;
            batch_.wait_until(lock, giveUp != nullptr ? std::min(due, now + kLook) : due);
        }
        return calls_[at]->isDone();
    }
    Clock::time_point dueOf(std::size_t at) {
        const std::lock_guard lock(mutex_);
        return std::min(end_, begun_[at].value_or(Clock::now()) + paths_[at].patience);
    }

private:
    static constexpr std::size_t kBatch = 256;

    void finish(std::size_t at) {
        calls_[at]->finish();
        const std::lock_guard lock(mutex_);
        if (++finished_ % kBatch == 0 || at + 1 == paths_.size() || at < left_) batch_.notify_all();
    }

    void ask(DriveCalls& drives, std::size_t at, std::string& plainFolder) noexcept {
        Call& call = *calls_[at];
        try {
            const Each& path = paths_[at];
            if (!drives.mayAsk(path.path, std::min(end_, Clock::now() + path.patience), nullptr)) {
                call.tell([](Call& one) { one.refused = true; });
            } else if (isPlain(path.path, call, plainFolder) || drives.follow(path.path, call)) {
                if (call.links.empty()) plainFolder = folderOf(path.path);
                question_(at);
            }
        } catch (...) {
            call.tell([](Call& one) { one.refused = true; });  // there is no memory: no answer
        }
    }

    /// The name lies in the folder of the one before, which no link leads to, and is none itself: one look instead of
    /// one at each part of the path.
    static bool isPlain(const std::string& path, Call& call, const std::string& plainFolder) {
        if (plainFolder.empty() || path.size() >= PATH_MAX || path.rfind('/') != plainFolder.size() ||
            !isBelow(path, plainFolder)) {
            return false;
        }
        call.tell([&](Call& one) { one.at = path; });
        std::array<char, 1> target{};
        return readlink(path.c_str(), target.data(), target.size()) < 0;
    }

    const std::vector<Each> paths_;
    const std::function<void(std::size_t)> question_;
    const Clock::time_point end_;
    std::vector<std::shared_ptr<Call>> calls_;
    std::atomic<std::size_t> next_{0};  ///< to be asked about
    std::atomic<std::size_t> left_{0};
    std::mutex mutex_;  ///< guards the rest
    std::condition_variable batch_;
    std::vector<std::optional<Clock::time_point>> begun_;
    std::size_t finished_ = 0;
};

std::vector<bool> DriveCalls::runEach(const std::vector<Each>& paths, Wait longest,
                                      std::function<void(std::size_t)> question) {
    std::vector<bool> answered(paths.size(), false);
    const Clock::time_point end = Clock::now() + longest.patience;
    const auto row = std::make_shared<Row>(paths, std::move(question), end);
    const auto isOver = [&] { return Clock::now() >= end || (longest.giveUp != nullptr && *longest.giveUp); };
    for (std::size_t at = 0; at < paths.size() && !isOver();) {
        if (!Worker::runOnKept([this, row](const Worker::GiveUp&) { row->ask(*this); })) break;
        for (bool goesOn = true; goesOn && at < paths.size(); ++at) {
            goesOn = row->wait(at, longest.giveUp);
            if (!goesOn) row->leave(at + 1);
            answered[at] = settle(paths[at].path, row->call(at), goesOn, row->dueOf(at));
        }
    }
    row->leave(paths.size());
    return answered;
}

}  // namespace corvane
