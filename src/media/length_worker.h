// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "platform/length_reader.h"
#include "workers/ui_post.h"
#include "workers/worker.h"

namespace corvane {

/// Lengths by the libraries that play the files. Sounds of which a file says nothing are estimated by their bit rate;
/// MIDI files, whose length only their player tells, are not known.
class LengthWorker : public LengthReader {
public:
    explicit LengthWorker(UiPost post) : post_(std::move(post)) {}

    void read(const std::string& path, std::int16_t kind, Done done) override;
    void giveUp() override;

private:
    using Flag = std::shared_ptr<std::atomic<bool>>;

    UiPost post_;
    Worker worker_;
    Flag givenUp_;  ///< of what is being read
};

}  // namespace corvane
