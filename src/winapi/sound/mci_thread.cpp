// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mci_thread.h"

#include <exception>
#include <utility>

#include "workers/worker.h"

namespace corvane {

namespace {

constexpr DWORD kEndMs = 2000;
constexpr int kMostHanging = 32;  ///< each keeps a stack and what its device holds

thread_local std::uint64_t numberHere = 0;

void dispatchMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

std::uint64_t nextNumber() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

std::uint64_t MciThread::here() { return numberHere; }

MciThread::Queue::Queue()
    : number(nextNumber()),
      filled(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      ended(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

MciThread::Queue::~Queue() {
    CloseHandle(filled);
    CloseHandle(ended);
}

/// Where the system refuses a thread, what waits is tried with the next job again.
bool MciThread::Queue::start(const std::shared_ptr<Queue>& self) {
    running = running || Worker::run([self](const Worker::GiveUp&) { self->run(); });
    return running;
}

bool MciThread::Queue::take(Job& job) {
    const std::lock_guard lock(mutex);
    since = 0;
    if (left || jobs.empty()) return false;
    job = std::move(jobs.front());
    jobs.pop_front();
    since = GetTickCount64();
    return true;
}

void MciThread::Queue::run() {
    numberHere = number;
    while (true) {
        for (Job job; take(job); job = nullptr) {
            try {
                job();
            } catch (const std::exception&) {  // it wanted memory that there is not: what it was for does not answer
            }
        }
        {
            const std::lock_guard lock(mutex);
            since = GetTickCount64();  // what a device tells is answered by calls to it as well
        }
        dispatchMessages();
        {
            const std::lock_guard lock(mutex);
            since = 0;
            if (left) break;
            if (!jobs.empty()) continue;
            if (ending) break;
        }
        MsgWaitForMultipleObjects(1, &filled, FALSE, INFINITE, QS_ALLINPUT);
    }
    const std::lock_guard lock(mutex);
    if (left) --hanging_;
    SetEvent(ended);
}

MciThread::MciThread() { queue_->start(queue_); }

MciThread::~MciThread() {
    {
        const std::lock_guard lock(queue_->mutex);
        queue_->ending = true;
        if (!queue_->running) return;
    }
    SetEvent(queue_->filled);
    if (WaitForSingleObject(queue_->ended, kEndMs) != WAIT_OBJECT_0) {
        const std::lock_guard lock(queue_->mutex);
        if (!std::exchange(queue_->left, true)) ++hanging_;
    }
}

void MciThread::post(Job job) {
    const std::lock_guard lock(queue_->mutex);
    queue_->jobs.push_back(std::move(job));
    queue_->start(queue_);
    SetEvent(queue_->filled);
}

bool MciThread::replaceIfHung(int milliseconds) {
    auto next = std::make_shared<Queue>();
    {
        const std::lock_guard lock(queue_->mutex);
        const ULONGLONG passed = queue_->since == 0 ? 0 : GetTickCount64() - queue_->since;
        if (queue_->since == 0 || passed < static_cast<ULONGLONG>(milliseconds) || hanging_ >= kMostHanging)
            return false;
        next->jobs.swap(queue_->jobs);
        queue_->left = true;
        ++hanging_;
    }
    queue_ = std::move(next);
    queue_->start(queue_);
    SetEvent(queue_->filled);
    return true;
}

}  // namespace corvane
