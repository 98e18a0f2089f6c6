// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "media/sound/sound_backend.h"

namespace corvane {

/// Opens and measures a sound in a thread of its own, so that a slow drive or a damaged file holds nobody up.
class OpenJob : public std::enable_shared_from_this<OpenJob> {
public:
    /// Comes back early once the flag was set, which the sound keeps as its own.
    using Opener = std::function<OpenedSound(const Abandoned& flag)>;

    /// Starts the thread. `opened` is called on it, once, when the sound is there or has failed; where the system
    /// refuses a thread, the job has finished at once, with that reason, and nothing is called.
    static std::shared_ptr<OpenJob> start(Opener opener, std::function<void()> opened);

    /// Waits at most `kWaitMs` for the sound with its length.
    void wait();
    bool finished() const;
    std::shared_ptr<SoundBackend> sound() const;  ///< empty until finished, or when it failed
    std::string reason() const;
    void abandon();  ///< nobody waits any more

    static constexpr int kWaitMs = 200;

private:
    void run(const Opener& opener, const std::function<void()>& opened);
    bool fail(const char* reason);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    bool finished_ = false;
    bool measured_ = false;
    Abandoned abandoned_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<SoundBackend> sound_;
    std::string reason_;
};

}  // namespace corvane
