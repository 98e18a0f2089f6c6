// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "media/sound/open_job.h"
#include "platform/one_shot.h"
#include "platform/sound_level.h"

namespace corvane {

/// The sound that is likely to be played next, opened and measured while the one before plays: where nothing is left to
/// be opened, it follows without a seam, and is heard as soon as somebody asks for it. Used by the user-interface
/// thread.
class SoundAhead {
public:
    /// The timers outlive it.
    explicit SoundAhead(Timers& timers) : later_(timers, [this] { begin(); }) {}
    SoundAhead(const SoundAhead&) = delete;
    SoundAhead& operator=(const SoundAhead&) = delete;
    ~SoundAhead() { drop(); }

    /// In place of the one before; the same one is kept. A sequence, and what cannot be opened, is opened when its turn
    /// comes. Where no seam is to be closed it is begun a moment later, so that the sound that begins now has the
    /// processor.
    void expect(const std::string& path, SoundLevel level);
    /// The open sound, which is the caller's from now on; null when it is another one, is not open yet, or when another
    /// file lies there now.
    std::shared_ptr<OpenJob> take(const std::string& path, SoundLevel level);
    void drop();
    bool isOpen() const { return job_ && job_->sound(); }

private:
    struct Mark;
    void begin();

    std::string path_;
    SoundLevel level_ = SoundLevel::AsRecorded;
    std::shared_ptr<Mark> mark_;
    std::shared_ptr<OpenJob> job_;  ///< null: none
    OneShot later_;                 ///< runs until it is begun
};

}  // namespace corvane
