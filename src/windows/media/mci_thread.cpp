// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/mci_thread.h"

#include <thread>
#include <utility>

namespace corvane {

namespace {

constexpr DWORD kEndMs = 2000;

void dispatchMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

MciThread::Queue::Queue()
    : filled(CreateEventW(nullptr, FALSE, FALSE, nullptr)), ended(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

MciThread::Queue::~Queue() {
    CloseHandle(filled);
    CloseHandle(ended);
}

bool MciThread::Queue::take(Job& job) {
    const std::lock_guard lock(mutex);
    if (jobs.empty()) return false;
    job = std::move(jobs.front());
    jobs.pop_front();
    return true;
}

void MciThread::Queue::run() {
    while (true) {
        for (Job job; take(job); job = nullptr) job();
        dispatchMessages();
        {
            const std::lock_guard lock(mutex);
            if (!jobs.empty()) continue;
            if (ending) break;
        }
        MsgWaitForMultipleObjects(1, &filled, FALSE, INFINITE, QS_ALLINPUT);
    }
    SetEvent(ended);
}

MciThread::MciThread() {
    std::thread([queue = queue_] { queue->run(); }).detach();
}

MciThread::~MciThread() {
    {
        const std::lock_guard lock(queue_->mutex);
        queue_->ending = true;
    }
    SetEvent(queue_->filled);
    WaitForSingleObject(queue_->ended, kEndMs);
}

void MciThread::post(Job job) const {
    const std::lock_guard lock(queue_->mutex);
    queue_->jobs.push_back(std::move(job));
    SetEvent(queue_->filled);
}

}  // namespace corvane
