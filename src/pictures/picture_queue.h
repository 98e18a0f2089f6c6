// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/ports.h"

namespace corvane {

/// Which picture a desktop's worker decodes next, and what becomes of it: Pictures::begin, giveUp and decodeAhead
/// without the thread. Its callers guard it.
class PictureQueue {
public:
    using Decoded = Pictures::Decoded;
    using Number = std::uint64_t;

    /// What tells a file from a changed one of the same name.
    struct Stamp {
        std::int64_t size = -1, seconds = 0, fraction = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Job {
        explicit Job(std::string file) : path(std::move(file)) {}
        const std::string path;
        std::atomic<bool> givenUp{false};  ///< nobody wants it any more; any thread
        bool isAwaited = false;
        bool wasHint = false;
    };
    struct Ready {
        std::string path;
        Stamp stamp;
        Decoded decoded;
    };
    /// What is to be told, to the one who began it with this number.
    struct Answer {
        Number number = 0;
        Decoded decoded;
    };

    // --- The user-interface thread -----------------------------------------------------------------------------------

    /// What was decoded ahead, whichever file it is: nothing is kept for later. Before begin().
    Ready takeReady();
    /// Whether that counts for a file that is as the stamp says.
    static bool counts(const Ready& ready, const std::string& path, const Stamp& stamp);
    /// The file is wanted, in place of what was begun before.
    Number begin(const std::string& path);
    /// What was begun is not wanted any more.
    void forget();
    void hint(const std::string& path);
    /// Nothing is wanted any more.
    void end();

    // --- The worker --------------------------------------------------------------------------------------------------

    bool anyWanted() const { return wanted_ != nullptr; }
    /// The one that waits is a hint, so that there is time.
    bool hasTime() const { return wanted_ == nullptr || !wanted_->isAwaited; }
    /// The next one; null: there is none.
    std::shared_ptr<Job> take();
    /// The job is done.
    std::optional<Answer> finish(const Job& job, const Stamp& stamp, Decoded decoded);

    bool isIdle() const { return wanted_ == nullptr && working_ == nullptr; }

private:
    Number number_ = 0;  ///< of what was begun last
    bool awaits_ = false;
    std::shared_ptr<Job> wanted_;
    std::shared_ptr<Job> working_;
    Ready ready_;
};

}  // namespace corvane
