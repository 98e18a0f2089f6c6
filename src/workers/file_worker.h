// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "platform/event_loop.h"
#include "platform/ports.h"

namespace corvane {

/// FileWork for any desktop: each task has a worker of its own.
class FileWorker : public FileWork {
public:
    /// Brings an event from any thread to the event loop; does nothing once the loop has gone.
    using Post = std::function<void(EventLoop::Handler)>;
    /// The desktop's files, for any thread. A task keeps them as long as it runs.
    FileWorker(Post post, std::shared_ptr<Files> files) : post_(std::move(post)), files_(std::move(files)) {}

    std::unique_ptr<Run> begin(Task task, std::function<void(bool ended)> done) override;

private:
    Post post_;
    std::shared_ptr<Files> files_;
};

}  // namespace corvane
