// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/file_worker.h"

#include <atomic>
#include <chrono>
#include <utility>

#include "workers/worker.h"

namespace corvane {

namespace {

using Steady = std::chrono::steady_clock;

class WorkerCourse : public FileWork::Course {
public:
    WorkerCourse(Files& files, const Worker::GiveUp& givenUp, std::atomic<std::size_t>& told)
        : files_(files), givenUp_(givenUp), told_(told) {}
    Files& files() override { return files_; }
    bool isGivenUp() const override { return givenUp_; }
    std::int64_t milliseconds() override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - began_).count();
    }
    void tell(std::size_t count) override { told_ = count; }

private:
    Files& files_;
    const Worker::GiveUp& givenUp_;
    std::atomic<std::size_t>& told_;
    const Steady::time_point began_ = Steady::now();
};

using Told = std::shared_ptr<std::atomic<std::size_t>>;
using Done = std::shared_ptr<std::function<void(bool ended)>>;

class WorkerRun : public FileWork::Run {
public:
    WorkerRun(Worker worker, Told told, Done done)
        : worker_(std::move(worker)), told_(std::move(told)), done_(std::move(done)) {}
    std::size_t told() const override { return *told_; }

private:
    Worker worker_;
    Told told_;
    Done done_;  ///< the user-interface thread's own: gone with this, nothing is told
};

}  // namespace

std::unique_ptr<FileWork::Run> FileWorker::begin(Task task, std::function<void(bool ended)> done) {
    const auto told = std::make_shared<std::atomic<std::size_t>>(0);
    const auto kept = std::make_shared<std::function<void(bool)>>(std::move(done));
    const auto answer = [post = post_, wanted = std::weak_ptr(kept)](bool ended) {
        post([wanted, ended] {
            if (const auto call = wanted.lock()) (*call)(ended);
        });
    };
    Worker worker;
    const bool runs = worker.start(
        [task = std::move(task), files = files_, told, answer](const Worker::GiveUp& givenUp) {
            WorkerCourse course(*files, givenUp, *told);
            task(course);
            answer(true);
        },
        [answer] { answer(false); });
    if (!runs) answer(false);
    return std::make_unique<WorkerRun>(std::move(worker), told, kept);
}

}  // namespace corvane
