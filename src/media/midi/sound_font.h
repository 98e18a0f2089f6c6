// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "drives/drive_file.h"

// The library's own name.
struct _fluid_hashtable_t;  // NOLINT(bugprone-reserved-identifier)
struct _fluid_synth_t;      // NOLINT(bugprone-reserved-identifier)

namespace corvane {

/// The file of the sounds for MIDI. All reading goes through DriveFile, so that a drive that does not answer holds
/// nobody.
class SoundFont {
public:
    /// The one that CORVANE_SOUNDFONT names, or the first found in the usual places. Null: `reason` says why, in words.
    static std::unique_ptr<SoundFont> find(std::string& reason);
    ~SoundFont();
    SoundFont(const SoundFont&) = delete;
    SoundFont& operator=(const SoundFont&) = delete;

    /// Loads it into a synthesizer made with these settings, which goes before it. False: it cannot be read.
    bool load(struct _fluid_hashtable_t* settings, struct _fluid_synth_t* synth);
    const std::string& path() const { return path_; }

private:
    SoundFont(std::string path, std::unique_ptr<DriveFile> file);
    static std::unique_ptr<SoundFont> open(const std::string& path, std::string& reason);

    std::string path_;
    std::string name_;  ///< what the library calls it
};

}  // namespace corvane
