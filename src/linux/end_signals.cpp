// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/end_signals.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

#include "drives/descriptor.h"
#include "drives/drive_calls.h"
#include "linux/qt_post.h"
#include "workers/worker.h"

namespace corvane {

namespace {

/// Whoever started the program may have it ignore some: it is to outlive a terminal.
bool isIgnored(int signal) {
    struct sigaction now {};
    return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

sigset_t ours() {
    sigset_t set{};
    sigemptyset(&set);
    for (const int each : {SIGTERM, SIGINT, SIGHUP}) {
        if (!isIgnored(each)) sigaddset(&set, each);
    }
    return set;
}

void keepFromThisThread(bool keep) {
    const sigset_t set = ours();
    pthread_sigmask(keep ? SIG_BLOCK : SIG_UNBLOCK, &set, nullptr);
}

}  // namespace

struct EndSignals::Watch {
    const sigset_t set = ours();
    Descriptor arrived{signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK)};
    Descriptor stop{eventfd(0, EFD_CLOEXEC)};

    std::mutex mutex;            ///< guards what follows
    std::optional<QtPost> post;  ///< none: nobody listens
    std::function<void()> asked;

    void run() {
        std::array<pollfd, 2> both{{{arrived.get(), POLLIN, 0}, {stop.get(), POLLIN, 0}}};
        while (poll(both.data(), both.size(), -1) >= 0 || errno == EINTR) {
            if (both[1].revents != 0) return;
            signalfd_siginfo told{};
            if (read(arrived.get(), &told, sizeof told) == static_cast<ssize_t>(sizeof told)) tell(told.ssi_signo);
        }
    }
    void tell(std::uint32_t signal) {
        const std::lock_guard lock(mutex);
        if (!post) {
            keepFromThisThread(false);
            raise(static_cast<int>(signal));
            return;
        }
        DriveCalls::hurried = true;
        (*post)([asked = asked] {
            DriveCalls::hurried = false;
            asked();
        });
    }
};

EndSignals::EndSignals() : watch_(std::make_shared<Watch>()) {
    keepFromThisThread(true);
    const bool watches = watch_->arrived && watch_->stop &&
                         Worker::run([watch = watch_](const Worker::GiveUp& /*givenUp*/) { watch->run(); });
    if (watches) return;
    watch_.reset();
    keepFromThisThread(false);
}

void EndSignals::listen(std::function<void()> asked) {
    if (!watch_) return;
    const std::lock_guard lock(watch_->mutex);
    watch_->asked = std::move(asked);
    watch_->post.emplace();
}

void EndSignals::leave() {
    if (!watch_) return;
    const std::lock_guard lock(watch_->mutex);
    if (watch_->post) watch_->post->stop();
    watch_->post.reset();
    watch_->asked = {};
}

void EndSignals::stop() {
    if (!watch_) return;
    const std::uint64_t one = 1;
    if (write(watch_->stop.get(), &one, sizeof one) < 0) return;
    watch_.reset();
}

}  // namespace corvane
