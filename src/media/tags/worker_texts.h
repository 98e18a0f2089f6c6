// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "media/tags/cover_files.h"
#include "platform/file_texts.h"
#include "workers/ui_post.h"
#include "workers/worker.h"

namespace corvane {

/// What files say of themselves, read in a worker by the libraries that play them. Pictures inside of them are written
/// to the player's folder of the session, so that other programs can be told of them. One asker waits for no other.
class WorkerTexts : public TextReader {
public:
    /// post: its own, which it stops.
    WorkerTexts(UiPost post, std::string runtimeFolder);
    ~WorkerTexts() override { post_.stop(); }

    void read(const std::string& path, What what, Done done) override;

private:
    UiPost post_;
    std::shared_ptr<CoverFiles> covers_;
};

}  // namespace corvane
